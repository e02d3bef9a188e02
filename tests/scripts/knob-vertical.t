assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KND
KNR
KNR
KNR
KNU
---
left down
hide
move 500 399
move 500 398
move 500 397
left up
show
