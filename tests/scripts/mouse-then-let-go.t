# Let go during the pause: the release is sent as always, and no drag begins afterwards.
assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KND
mouse 600 300
KNU
wait 400
---
left down
hide
left up
show
left up
show
