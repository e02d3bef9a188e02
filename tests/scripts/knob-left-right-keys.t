# Crossed on purpose: a left step is the Right arrow.
assign 0 NORMAL special ← → Key
BP0
BR0
KND
KNL
KNR
KNU
---
key 39 down
key 39 up
key 37 down
key 37 up
