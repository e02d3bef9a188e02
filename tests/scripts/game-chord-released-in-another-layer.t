# Released in Shift 1 the button is another one, but once no button is down none of the chord is held.
assign 0 NORMAL special horizontal
assign 1 NORMAL special vertical
assign 2 NORMAL special circular
assign 3 NORMAL special shift 1
assign 3 SHIFT1 special shift 1
BP0
BP3
BR0
BR3
BP1
BP2
BR1
BR2
---
