# A touch that began before the game is interrupted by the mouse as always; let go in the game, it does not come back.
assign 0 NORMAL special horizontal
assign 1 NORMAL special circular
assign 2 NORMAL special vertical
at 500 400
KND
BP0
BP1
BP2
BR0
BR1
BR2
mouse 600 300
KNU
wait 400
---
left down
hide
panel GAME
left up
show
game S
