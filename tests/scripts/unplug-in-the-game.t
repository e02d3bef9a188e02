# The game ends without a word to the page, and a touch that it got does not become a release on the desktop.
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
unplug
plug
KND
KNR
KNU
---
panel GAME
game D
left down
hide
move 500 399
left up
show
