# 1500 pixels from the left do not fit into 1280: half of its width.
screens 0,0,1920x1080 1920,0,1280x1024
assign 0 NORMAL special monitor left
at 1500 300
BP0
BR0
---
move 2560 300
