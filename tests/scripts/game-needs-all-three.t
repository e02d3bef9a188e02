assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
BP0
BP1
BR0
BP2
BR1
BR2
---
