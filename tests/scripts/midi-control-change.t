assign 0 NORMAL midi channel=16 cc=7 on=127 off=0 note=0 release=1
BP0
BR0
---
midi BF 07 7F
midi BF 07 00
