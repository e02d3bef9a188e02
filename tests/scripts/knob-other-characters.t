# What is neither touch, release nor step does nothing.
assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
KN+
KNS
KNl
KNU
---
