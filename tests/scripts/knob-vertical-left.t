assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KND
KNL
KNU
---
left down
hide
move 500 401
left up
show
