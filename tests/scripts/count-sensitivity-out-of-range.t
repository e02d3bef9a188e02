# 0 counts as 1, 1000 as 100.
in-process
sensitivity 0 1000
assign 0 NORMAL special  ↓  ↑ Key
assign 1 NORMAL special shift 1
assign 1 SHIFT1 special shift 1
BP0
BR0
KND
BP1
100
100
100
BR1
-10
-11
-11
-11
KNU
---
key 40 down
key 40 up
key 38 down
key 38 up
key 38 down
key 38 up
