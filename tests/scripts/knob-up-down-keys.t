# No button, and the pointer keeps its look.
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
KNL
KNR
KNU
---
key 38 down
key 38 up
key 40 down
key 40 up
