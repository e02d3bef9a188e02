# Each letting-go starts a pause of its own, and the first that ends makes the return point changeable again.
in-process
assign 0 NORMAL special vertical
assign 1 NORMAL special circular
at 500 400
KND
KNU
wait 600
KND
KNU
BP0
BR0
KND
KNR
KNU
BP1
BR1
wait 400
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
