# As if it were let go.
assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KND
KNR
unplug
---
left down
hide
move 500 399
left up
show
