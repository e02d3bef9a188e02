# A hand alone is never undone, from the first movement of a burst on, although the knob starts circular.
at 500 400
mouse 510 400
mouse 520 400
wait 400
mouse 530 400
---
