# The other way round: the release of the drag is sent as the mode says, although none began.
assign 0 NORMAL special vertical
assign 1 NORMAL special  ↓  ↑ Key
at 500 400
BP1
BR1
KND
BP0
BR0
KNR
KNU
---
move 500 399
left up
show
