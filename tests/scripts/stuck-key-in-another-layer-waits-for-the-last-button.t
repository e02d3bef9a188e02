# What is left down is released when no button is down, not earlier.
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 NORMAL keys -1 -1 -1
assign 1 SHIFT1 keys 16 -1 -1
assign 2 NORMAL keys 65 -1 -1
BP0
BP1
BR0
BP2
BR1
BR2
---
key 16 down
key 65 down
key 65 up
key 16 up
