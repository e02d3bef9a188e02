# After four times 12 the last value is 12, and a count of -3 adds up to 9: ignored; -2 adds up to 10: taken.
# 0 12 12 12 -> 12 was reached at the third; -2 12 12 12 -> 12, then -2 -2 12 12 -> 5.
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
12
12
12
12
-3
-2
-2
KNU
---
key 40 down
key 40 up
key 40 down
key 40 up
key 38 down
key 38 up
