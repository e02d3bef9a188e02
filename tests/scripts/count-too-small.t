assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
5
9
-9
5
5
5
KNU
---
