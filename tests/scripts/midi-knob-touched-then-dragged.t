# The touch began a note, the mode is another one when it ends: the note ends with the touch.
assign 0 NORMAL midi_knob channel=1 cc=60 on=100 off=0 note=1 release=1
assign 1 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
BP1
BR1
KNU
---
midi 90 3C 64
midi 80 3C 00
