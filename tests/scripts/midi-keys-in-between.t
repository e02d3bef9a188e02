# A MIDI button does not change the knob's mode and sends no key.
assign 0 NORMAL midi channel=1 cc=60 on=100 off=0 note=1 release=1
assign 1 NORMAL special  ↓  ↑ Key
BP1
BR1
BP0
BR0
KND
KNL
KNU
---
midi 90 3C 64
midi 80 3C 00
key 38 down
key 38 up
