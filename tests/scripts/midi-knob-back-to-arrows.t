assign 0 NORMAL midi_knob channel=1 cc=10 on=1 off=2 release=1
assign 1 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
KNU
BP1
BR1
KND
KNL
KNU
---
midi B0 0A 01
midi B0 0A 02
key 38 down
key 38 up
