assign 0 NORMAL special  ↓  ↑ Key
assign 1 NORMAL special horizontal
BP0
BR0
BR1
KND
KNL
KNU
---
key 38 down
key 38 up
