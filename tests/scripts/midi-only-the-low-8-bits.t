in-process
assign 0 NORMAL midi channel=258 cc=256 on=300 off=-1 note=0 release=1
BP0
BR0
---
midi B1 00 2C
midi B1 00 FF
