assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KNL
KND
KNL
KNU
KNR
---
key 38 down
key 38 up
