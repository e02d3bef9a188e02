# Begun in Shift 1, released in Normal: the note ends when no button is down.
assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 NORMAL keys 65 -1 -1
assign 1 SHIFT1 midi channel=1 cc=60 on=100 off=0 note=1 release=1
BP0
BP1
BR0
BR1
---
midi 90 3C 64
key 65 up
midi 80 3C 00
