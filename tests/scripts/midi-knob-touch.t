# Touching and letting go are a press and a release; nothing is dragged.
assign 0 NORMAL midi_knob channel=3 cc=64 on=127 off=5 note=0 release=1
at 500 400
BP0
BR0
KND
KNU
---
midi B2 40 7F
midi B2 40 05
