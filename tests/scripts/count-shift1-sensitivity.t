# Shift 1 has its own divisor; Shift 2 goes by Normal's.
sensitivity 10 100
assign 0 NORMAL special  ↓  ↑ Key
assign 1 NORMAL special shift 1
assign 1 SHIFT1 special shift 1
assign 2 NORMAL special shift 2
assign 2 SHIFT2 special shift 2
BP0
BR0
KND
BP1
50
50
50
50
BR1
BP2
50
50
BR2
KNU
---
key 40 down
key 40 up
