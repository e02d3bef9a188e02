# Exactly 1000 ms after letting go the return point may change.
in-process
assign 0 NORMAL special vertical
assign 1 NORMAL special circular
at 500 400
KND
KNU
BP0
BR0
KND
KNR
KNU
BP1
BR1
wait 1000
KND
KNU
---
left down
hide
left up
show
move 500 400
left down
hide
move 500 399
left up
show
left down
hide
left up
show
move 500 399
