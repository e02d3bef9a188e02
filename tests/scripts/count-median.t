# The median of the last four: 0 0 0 4 -> 0, 0 0 4 4 -> 2, 0 4 4 4 -> 4, 4 4 4 4 -> 4; -30 / 3 -> -10 4 4 4 -> 4,
# then -10 -10 4 4 -> -3.
sensitivity 3 1
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
12
12
12
12
-30
-30
KNU
---
key 40 down
key 40 up
key 40 down
key 40 up
key 38 down
key 38 up
