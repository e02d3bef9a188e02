# Changed while held: the release runs the new record; the old key is released when no button is down.
assign 0 NORMAL keys 65 -1 -1
BP0
remap assign 0 NORMAL keys 66 -1 -1
BR0
BP0
BR0
---
key 65 down
key 66 up
key 65 up
key 66 down
key 66 up
