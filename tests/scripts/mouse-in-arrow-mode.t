# No drag to interrupt, but the steps pause.
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
KNL
mouse 600 300
KNL
wait 400
KNL
KNU
---
key 38 down
key 38 up
key 38 down
key 38 up
