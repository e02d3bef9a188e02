# The releases of buttons that nobody held leave the chosen mode alone.
assign 0 NORMAL special  ↓  ↑ Key
assign 7 NORMAL special horizontal
assign 8 NORMAL midi_knob channel=1 cc=64 on=127 off=0 note=0 release=1
assign 9 NORMAL special ← → Key
BP0
BR0
unplug
plug
KND
KNL
KNU
---
key 38 down
key 38 up
