# Touched before the game and let go in it: afterwards the knob counts as let go, and steps do nothing.
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
KNU
BP2
BR2
KNR
mouse 600 300
wait 400
---
left down
hide
panel GAME
game S
left up
show
panel ZR
