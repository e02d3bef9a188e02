# Not below 0; a fresh start after the button, on its release too.
in-process
assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m0_127=1
BP0
KNL
KNR
KNR
KNL
BR0
KNR
---
midi B0 14 00
midi B0 14 01
midi B0 14 02
midi B0 14 01
midi B0 14 01
