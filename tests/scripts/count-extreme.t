# Neither a sum nor a square nor the median overflows. The largest value and the smallest add up to -1: ignored.
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
2147483647
2147483647
2147483647
2147483647
-2147483648
-2147483600
-2147483600
-2147483600
-2147483648
-2147483648
KNU
---
key 40 down
key 40 up
key 40 down
key 40 up
key 38 down
key 38 up
key 38 down
key 38 up
key 38 down
key 38 up
