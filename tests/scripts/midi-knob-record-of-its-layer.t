# The record is that of the layer in which the button was pressed, or let go.
in-process
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m01h=1
assign 1 SHIFT1 midi_knob channel=2 cc=-1 knobcc=21 m01h=1
BP0
BP1
KNL
BR1
BR0
KNL
BP1
BR1
KNL
BP0
BP1
BR0
KNL
BR1
KNL
---
midi B1 15 7F
midi B1 15 7F
midi B0 14 7F
midi B1 15 7F
midi B0 14 7F
