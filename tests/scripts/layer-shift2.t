assign 0 NORMAL special shift 2
assign 0 SHIFT2 special shift 2
assign 1 NORMAL keys 65 -1 -1
assign 1 SHIFT1 keys 66 -1 -1
assign 1 SHIFT2 keys 67 -1 -1
BP0
BP1
BR1
BR0
BP1
BR1
---
key 67 down
key 67 up
key 65 down
key 65 up
