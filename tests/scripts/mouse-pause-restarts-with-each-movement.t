in-process
assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KND
mouse 600 300
wait 200
mouse 610 300
wait 249
KNR
wait 1
KNR
KNU
---
left down
hide
left up
show
left down
hide
move 610 299
left up
show
