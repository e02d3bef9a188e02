# Touched in the game, let go on the desktop: the release is sent as the mode says.
assign 0 NORMAL special horizontal
assign 1 NORMAL special circular
assign 2 NORMAL special vertical
at 500 400
BP0
BP1
BP2
BR0
BR1
BR2
KND
BP2
BR2
KNL
KNU
---
panel GAME
game D
panel ZR
left up
show
