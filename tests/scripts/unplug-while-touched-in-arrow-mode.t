assign 0 NORMAL special  ↓  ↑ Key
BP0
BR0
KND
KNL
unplug
wait 1200
plug
KNL
---
key 38 down
key 38 up
