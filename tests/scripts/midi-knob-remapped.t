# The next event goes by the new record.
in-process
assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m01h=1
BP0
BR0
KNL
remap assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=30 m3fh=1
KNL
---
midi B0 14 7F
midi B0 1E 3F
