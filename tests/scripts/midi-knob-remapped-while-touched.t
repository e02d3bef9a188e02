# The note that the touch began ends with the touch, although the button's entry says nothing of it any more.
in-process
assign 0 NORMAL midi_knob channel=1 cc=60 on=100 off=0 note=1 release=1
BP0
BR0
KND
remap assign 0 NORMAL keys 65 -1 -1
KNL
KNU
---
midi 90 3C 64
midi 80 3C 00
