# Released and pressed again while the two others are held completes the chord again: the game stays.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
BP0
BP1
BP2
BR2
BP2
BR0
BP1
BR1
BR2
---
panel GAME
panel ZR
