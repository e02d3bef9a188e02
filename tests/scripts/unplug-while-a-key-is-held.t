assign 3 NORMAL keys 17 90 -1
BP3
unplug
wait 50
plug
BP3
BR3
---
key 17 down
key 90 down
key 17 up
key 90 up
key 17 down
key 90 down
key 17 up
key 90 up
