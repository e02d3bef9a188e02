# The touch began a drag, the mode is MIDI when it ends: the release message, then the drag ends.
assign 0 NORMAL special vertical
assign 1 NORMAL midi_knob channel=1 cc=64 on=127 off=0 note=0 release=1
at 500 400
BP0
BR0
KND
BP1
BR1
KNU
---
left down
hide
midi B0 40 00
left up
show
