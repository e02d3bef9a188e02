# Counts reach the game as steps.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
BP0
BP1
BP2
BR0
BR1
BR2
20
20
20
---
panel GAME
game R
game R
