# The drag ends with the touch, not only when the last button is let go.
assign 0 NORMAL special vertical
assign 1 NORMAL special  ↓  ↑ Key
assign 2 NORMAL keys 65 -1 -1
at 500 400
BP0
BR0
KND
BP1
BP2
KNU
BR2
BR1
---
left down
hide
key 65 down
left up
show
key 65 up
