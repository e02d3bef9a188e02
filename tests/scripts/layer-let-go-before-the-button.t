# The button is released with its Normal record; what it pressed in Shift 1 is released when no button is down.
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 NORMAL keys 65 -1 -1
assign 1 SHIFT1 keys 17 66 -1
BP0
BP1
BR0
BR1
---
key 17 down
key 66 down
key 65 up
key 17 up
key 66 up
