in-process
assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m01h=1 m3fh=1
assign 1 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m01h=1 m3fh=1 m0_127=1
BP0
BR0
KNR
BP1
BR1
KNR
---
midi B0 14 41
midi B0 14 01
