# Within 1000 ms a touch keeps the first one's return point.
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
wait 999
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
move 500 400
