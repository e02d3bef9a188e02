assign 0 NORMAL special shift 1
assign 0 SHIFT1 special shift 1
assign 1 NORMAL midi channel=1 cc=20 on=1 off=0 note=0 release=1
assign 1 SHIFT1 midi channel=2 cc=21 on=2 off=0 note=0 release=1
BP0
BP1
BR0
BR1
---
midi B1 15 02
midi B0 14 00
midi B1 15 00
