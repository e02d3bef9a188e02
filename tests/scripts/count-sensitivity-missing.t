# Without a stored value the divisor is 1.
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
10
10
KNU
---
key 40 down
key 40 up
