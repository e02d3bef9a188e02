# The drag ends, steps are ignored, and 250 ms after the last movement the drag goes on.
assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KND
KNR
mouse 600 300
KNR
wait 400
KNR
KNU
---
left down
hide
move 500 399
left up
show
left down
hide
move 600 299
left up
show
