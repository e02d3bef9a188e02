screens 0,0,1920x1080 1920,0,1280x1024
assign 0 NORMAL special horizontal
assign 1 NORMAL special monitor left
at 100 200
BP0
BR0
BP1
BR1
KND
KNR
KNU
---
move 2020 200
left down
hide
move 2021 200
left up
show
