# In any order; one of them alone leaves.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
BP2
BP0
BP1
BR0
BR1
BR2
BP1
BR1
BP1
BR1
---
panel GAME
panel ZR
