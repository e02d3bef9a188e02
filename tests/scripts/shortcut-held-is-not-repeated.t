assign 0 NORMAL keys 65 -1 -1
BP0
wait 2000
BR0
---
key 65 down
key 65 up
