# The game takes the knob's events; the knob is MIDI again when it is left by another button of the chord.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
assign 3 NORMAL midi_knob channel=1 cc=10 on=1 off=2 release=1
BP0
BP1
BP2
BR0
BR1
BR2
BP3
BR3
KND
KNU
---
panel GAME
game D
game S
