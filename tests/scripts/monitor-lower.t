# 1050 pixels from the top do not fit into 1024: half of its height.
screens 0,0,1920x1080 1920,0,1280x1024
assign 0 NORMAL special monitor left
at 300 1050
BP0
BR0
---
move 2220 512
