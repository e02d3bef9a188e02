# A good second after letting go a touch notes its own return point.
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
wait 1200
KND
KNR
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
move 500 398
left up
show
move 500 399
