# Ten releases, 0 to 9, also of buttons that are not down.
assign 0 NORMAL keys 65 -1 -1
assign 9 NORMAL keys 66 -1 -1
BP9
unplug
---
key 66 down
key 65 up
key 66 up
