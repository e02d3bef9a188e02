# Only the low 16 bits of a code reach the system.
in-process
assign 0 NORMAL keys 0x10041 0x20000 -2147483648
BP0
BR0
---
key 65 down
key 65 up
