# The game takes the release; the drag ends all the same.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
at 500 400
KND
BP0
BP1
BP2
BR0
BR1
BR2
KNL
KNU
---
left down
hide
panel GAME
game L
game S
left up
show
