# One below the first channel: the status byte of the kind below.
assign 0 NORMAL midi channel=0 cc=7 on=1 off=2 note=0 release=1
BP0
BR0
---
midi AF 07 01
midi AF 07 02
