# A distance that equals the width is kept: one pixel beyond the screen's last column.
in-process
screens 0,0,1920x1080 1920,0,1280x1024
assign 0 NORMAL special monitor left
at 1280 0
BP0
BR0
---
move 3200 0
