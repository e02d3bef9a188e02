assign 0 NORMAL midi channel=1 cc=60 on=100 off=0 note=1 release=1
BP0
unplug
---
midi 90 3C 64
midi 80 3C 00
