# A button released in another layer than it was pressed in sets its mode there.
assign 0 NORMAL special  ↓  ↑ Key
assign 0 SHIFT1 special ← → Key
assign 1 NORMAL special shift 1
assign 1 SHIFT1 special shift 1
BP0
BP1
BR0
KND
KNL
KNU
BR1
---
key 39 down
key 39 up
