assign 1 NORMAL keys 65 -1 -1
raw 4250310A0D0A4252310A0D0A
---
key 65 down
key 65 up
