in-process
assign 0 NORMAL midi_knob channel=1 cc=60 on=1 off=2 note=0 release=1 knobcc=20 m01h=1
BP0
BR0
KN+
KNS
---
