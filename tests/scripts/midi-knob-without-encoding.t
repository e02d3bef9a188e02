assign 0 NORMAL midi_knob channel=1 cc=-1
BP0
BR0
KNL
KNR
---
midi B0 00 00
midi B0 00 00
