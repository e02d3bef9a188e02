# Buttons act as always while the game is on.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
assign 3 NORMAL keys 65 -1 -1
BP0
BP1
BP2
BR0
BR1
BR2
BP3
BR3
---
panel GAME
key 65 down
key 65 up
