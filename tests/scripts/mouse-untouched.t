# In another mode nothing happens.
assign 0 NORMAL special horizontal
at 500 400
BP0
BR0
mouse 600 300
wait 400
mouse 610 300
---
