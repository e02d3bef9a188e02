assign 0 NORMAL special horizontal
at 500 400
BP0
BR0
KND
KNL
KNR
KNR
KNU
---
left down
hide
move 499 400
move 500 400
move 501 400
left up
show
