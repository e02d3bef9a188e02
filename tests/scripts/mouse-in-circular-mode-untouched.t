# The first movement puts the pointer back to where it last came to rest, whether or not the knob is touched.
in-process
at 500 400
mouse 510 400
mouse 520 400
wait 250
mouse 530 400
---
move 500 400
move 520 400
