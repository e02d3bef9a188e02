assign 0 NORMAL keys 65 -1 -1
assign 9 NORMAL keys 66 -1 -1
BP0
BP9
BR0
BR9
---
key 65 down
key 66 down
key 65 up
key 66 up
