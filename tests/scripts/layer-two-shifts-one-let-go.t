# Letting one of two shift buttons go leads to Normal, not to the layer before.
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 0 SHIFT2 special shift 1
assign 1 NORMAL special shift 2
assign 1 SHIFT1 special shift 2
assign 1 SHIFT2 special shift 2
assign 2 NORMAL keys 65 -1 -1
assign 2 SHIFT1 keys 66 -1 -1
assign 2 SHIFT2 keys 67 -1 -1
BP0
BP1
BP2
BR2
BR1
BP2
BR2
BR0
BP2
BR2
---
key 67 down
key 67 up
key 65 down
key 65 up
key 65 down
key 65 up
