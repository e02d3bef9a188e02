# A key-up for a key that is not down is sent as the mapping says.
assign 0 NORMAL keys 65 -1 -1
BR0
---
key 65 up
