# The controller goes back before the release of the held button changes the mode, which it still does.
assign 0 NORMAL special  ↓  ↑ Key
assign 1 NORMAL midi_knob channel=1 cc=64 on=127 off=0 note=0 release=1
BP0
BP1
BR1
KND
unplug
plug
KND
KNL
KNU
---
midi B0 40 7F
midi B0 40 00
key 38 down
key 38 up
