# The arrow modes neither call the game up nor leave it.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
assign 3 NORMAL special  ↓  ↑ Key
assign 4 NORMAL special ← → Key
BP0
BP1
BP2
BR0
BR1
BR2
BP3
BR3
BP4
BR4
KNL
BP0
BR0
---
panel GAME
game L
panel ZR
