in-process
assign 0 NORMAL midi_knob channel=2 cc=-1 knobcc=20 m3fh=1
BP0
BR0
KND
KNL
KNR
KNU
---
midi B1 14 3F
midi B1 14 41
