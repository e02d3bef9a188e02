# Three empty slots, and an entry that nobody has set, send nothing.
assign 0 NORMAL keys -1 -1 -1
BP0
BR0
BP1
BR1
---
