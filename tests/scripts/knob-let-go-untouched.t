# Passed on although nothing is held.
assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KNU
---
left up
show
