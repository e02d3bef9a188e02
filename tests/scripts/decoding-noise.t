# Lines that mean nothing leave no trace; a count sent as digits is one.
assign 1 NORMAL keys 65 -1 -1
raw 4258310A0D0A
raw 68656C6C6F0A0D0A
raw 35350D0A0A0D0A
BP1
BR1
---
key 65 down
key 65 up
