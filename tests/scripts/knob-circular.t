# The pointer goes back to where the knob was touched.
assign 0 NORMAL special circular
at 500 400
BP0
BR0
KND
KNR
KNR
KNL
KNL
KNL
KNU
---
left down
hide
move 500 399
move 500 398
move 500 399
move 500 400
move 500 401
left up
show
move 500 400
