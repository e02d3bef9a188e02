# Without a release message the release sends nothing.
assign 0 NORMAL midi channel=1 cc=60 on=100 off=0 note=1 release=0
BP0
BR0
---
midi 90 3C 64
