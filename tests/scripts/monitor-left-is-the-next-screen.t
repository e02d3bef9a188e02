screens 0,0,1920x1080 1920,0,1280x1024 3200,0,800x600
assign 0 NORMAL special monitor left
at 100 200
BP0
BR0
BP0
BR0
BP0
BR0
---
move 2020 200
move 3300 200
move 100 200
