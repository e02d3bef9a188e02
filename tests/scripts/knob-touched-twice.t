# (A real server does not tell a second press from none.)
in-process
# A second touch without a release is passed on like the first.
assign 0 NORMAL special vertical
at 500 400
BP0
BR0
KND
KND
KNU
---
left down
hide
left down
hide
left up
show
