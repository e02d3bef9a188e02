# The mouse does not take the pointer back to the other screen; where it comes to rest is the new return point.
in-process
screens 0,0,1000x800 1000,0,1000x800
assign 0 NORMAL special monitor left
at 500 400
KND
BP0
BR0
mouse 1510 410
wait 250
KNR
KNU
---
left down
hide
move 1500 400
left up
show
left down
hide
move 1510 409
left up
show
move 1510 410
