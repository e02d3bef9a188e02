assign 0 NORMAL midi channel=1 cc=-1 on=127 off=0 note=0 release=1
BP0
BR0
---
