# The knob keeps its mode, and sends nothing until the button's entry is for the knob again.
in-process
assign 0 NORMAL midi_knob channel=1 cc=60 on=100 off=0 note=1 release=1 knobcc=20 m01h=1
BP0
BR0
KNL
remap assign 0 NORMAL keys 65 -1 -1
KND
KNL
KNR
KNU
remap assign 0 NORMAL midi channel=2 cc=60 on=100 off=0 note=1 release=1
KND
KNL
KNU
remap assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=30 m3fh=1
KNL
---
midi B0 14 7F
midi B0 1E 3F
