in-process
screens 0,0,1920x1080 -1280,-200,1280x1024
assign 0 NORMAL special monitor left
at 10 20
BP0
BR0
BP0
BR0
---
move -1270 -180
move 10 20
