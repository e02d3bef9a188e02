# ... and the knob is let go.
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 SHIFT1 keys 16 -1 -1
assign 2 NORMAL special vertical
at 500 400
BP2
BR2
BP0
BP1
BR0
KND
BR1
KNR
KNU
---
key 16 down
left down
hide
move 500 399
left up
show
key 16 up
