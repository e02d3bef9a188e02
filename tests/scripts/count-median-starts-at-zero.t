# 12 with sensitivity 3 puts a single 4 into the ring, and the median stays 0.
sensitivity 3 1
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
12
KNU
---
