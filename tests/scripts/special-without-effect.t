# "empty" and "midi" as special actions do nothing.
assign 0 NORMAL special empty
assign 1 NORMAL special midi
assign 2 NORMAL special  ↓  ↑ Key
BP2
BR2
BP0
BR0
BP1
BR1
KND
KNL
KNU
---
key 38 down
key 38 up
