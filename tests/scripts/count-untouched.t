# The ring fills, but steps count only while the knob is touched.
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
20
20
20
---
