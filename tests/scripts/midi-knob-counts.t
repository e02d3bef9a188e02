in-process
assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m01h=1
BP0
BR0
20
20
20
-60
-60
-60
---
midi B0 14 01
midi B0 14 01
midi B0 14 7F
midi B0 14 7F
