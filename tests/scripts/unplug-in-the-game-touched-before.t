# The touch was the desktop's: its drag ends as by letting go.
assign 0 NORMAL special horizontal
assign 1 NORMAL special circular
assign 2 NORMAL special vertical
at 500 400
KND
BP0
BP1
BP2
unplug
---
left down
hide
panel GAME
left up
show
move 500 400
