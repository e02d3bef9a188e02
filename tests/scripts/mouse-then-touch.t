# A touch during the pause begins its drag; steps wait for the mouse to rest.
assign 0 NORMAL special vertical
at 500 400
BP0
BR0
mouse 600 300
KND
KNR
wait 400
KNR
KNU
---
left down
hide
move 600 299
left up
show
