# A step is always a press: sent also where a release sends nothing, and without a touch.
in-process
assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m01h=1 release=0 note=1
BP0
BR0
KNL
---
midi B0 14 7F
