# The touch began a drag; the mode is an arrow mode when it ends. The drag ends with it.
assign 0 NORMAL special vertical
assign 1 NORMAL special  ↓  ↑ Key
at 500 400
BP0
BR0
KND
BP1
BR1
KNL
KNU
---
left down
hide
key 38 down
key 38 up
left up
show
