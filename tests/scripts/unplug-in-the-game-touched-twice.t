# The first touch counts: it was the desktop's.
in-process
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
at 500 400
KND
KNR
BP0
BP1
BP2
KND
unplug
---
left down
hide
move 500 399
panel GAME
game D
left up
show
move 500 400
