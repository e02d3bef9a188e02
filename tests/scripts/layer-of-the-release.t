# Pressed in Normal, released in Shift 1: the key-up of the Shift 1 record is sent although that key is not down.
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 NORMAL keys 65 -1 -1
assign 1 SHIFT1 keys 66 -1 -1
BP1
BP0
BR1
BR0
---
key 65 down
key 66 up
key 65 up
