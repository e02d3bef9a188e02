# The second touch is too quick for a return point of its own, and the old one is on the other screen.
in-process
screens 0,0,1000x800 1000,0,1000x800
assign 0 NORMAL special monitor left
at 500 400
KND
KNU
BP0
BR0
KND
mouse 1510 410
---
left down
hide
left up
show
move 500 400
move 1500 400
left down
hide
left up
show
