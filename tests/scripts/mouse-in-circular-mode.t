# The pointer goes back to the return point first; where the mouse comes to rest is the new one.
in-process
at 500 400
KND
KNR
mouse 600 300
mouse 700 300
wait 250
KNR
KNU
---
left down
hide
move 500 399
left up
show
move 500 400
left down
hide
move 700 299
left up
show
move 700 300
