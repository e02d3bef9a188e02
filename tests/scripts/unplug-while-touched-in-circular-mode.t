at 500 400
KND
KNR
unplug
---
left down
hide
move 500 399
left up
show
move 500 400
