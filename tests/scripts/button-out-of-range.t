# "BP:" is button 10, "BP/" button -1.
assign 0 NORMAL keys 65 -1 -1
assign 9 NORMAL keys 66 -1 -1
raw 42503A0A0D0A
raw 42502F0A0D0A
raw 4250FF0A0D0A
BP0
BR0
---
key 65 down
key 65 up
