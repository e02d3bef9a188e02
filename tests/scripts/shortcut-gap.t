# An empty slot between two keys.
assign 0 NORMAL keys 17 -1 83
BP0
BR0
---
key 17 down
key 83 down
key 17 up
key 83 up
