# The button that set the layer sets it back, also when its record in that layer is another one (which runs).
assign 0 NORMAL special shift 1
assign 0 SHIFT1 keys 70 -1 -1
assign 1 NORMAL keys 65 -1 -1
assign 1 SHIFT1 keys 66 -1 -1
BP0
BP1
BR1
BR0
BP1
BR1
---
key 66 down
key 66 up
key 70 up
key 65 down
key 65 up
