# The knob's events go to the game and nowhere else; letting go is 'S'.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
BP0
BP1
BP2
BR0
BR1
BR2
KND
KNL
KNR
KN+
KNU
---
panel GAME
game D
game L
game R
game +
game S
