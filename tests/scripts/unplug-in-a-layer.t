# The layer is Normal after the device has come back.
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 NORMAL keys 65 -1 -1
assign 1 SHIFT1 keys 66 -1 -1
BP0
BP1
unplug
plug
BP1
BR1
---
key 66 down
key 65 up
key 66 up
key 65 down
key 65 up
