# A pointer on no screen counts for the nearest one.
in-process
screens 0,0,1920x1080 1920,0,1280x1024
assign 0 NORMAL special monitor left
at 3300 100
BP0
BR0
---
move 1380 100
