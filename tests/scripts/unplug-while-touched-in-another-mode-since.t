# The knob is let go as it was touched: the controller goes back, and no drag that never began is ended.
assign 0 NORMAL special horizontal
assign 1 NORMAL midi_knob channel=1 cc=64 on=127 off=0 note=0 release=1
BP1
BR1
KND
BP0
BR0
unplug
---
midi B0 40 7F
midi B0 40 00
