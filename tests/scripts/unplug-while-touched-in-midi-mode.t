# The release message is sent.
assign 0 NORMAL midi_knob channel=1 cc=64 on=127 off=0 note=0 release=1
BP0
BR0
KND
unplug
---
midi B0 40 7F
midi B0 40 00
