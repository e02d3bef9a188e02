# The pointer stays where it is.
screens 0,0,1920x1080
assign 0 NORMAL special monitor left
assign 1 NORMAL special monitor right
at 1700 900
BP0
BR0
BP1
BR1
---
move 1700 900
move 1700 900
