# Ctrl+Shift+S: the release goes in the order of the press, not in reverse.
assign 0 NORMAL keys 17 16 83
BP0
BR0
---
key 17 down
key 16 down
key 83 down
key 17 up
key 16 up
key 83 up
