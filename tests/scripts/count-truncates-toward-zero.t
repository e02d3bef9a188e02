# -11 / 3 is -3. Ring -3 -3 0 0: (-3 + 0) / 2 is -1, a step to the left. Then -3 -3 -3 0: -3. With the last value -3 a
# count of -7 adds up to -10 and is taken: -2, which leaves the median at -3.
sensitivity 3 1
assign 0 NORMAL special ← → Key
BP0
BR0
KND
-11
-11
-11
-7
KNU
---
key 39 down
key 39 up
key 39 down
key 39 up
