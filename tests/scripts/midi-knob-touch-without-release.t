assign 0 NORMAL midi_knob channel=3 cc=64 on=127 off=5 note=1 release=0
BP0
BR0
KND
KNU
---
midi 92 40 7F
