# 130 steps: 1 to 126, then 127 four times without storing it; a step back sends 125.
in-process
assign 0 NORMAL midi_knob channel=1 cc=-1 knobcc=20 m0_127=1
BP0
BR0
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNR
KNL
---
midi B0 14 01
midi B0 14 02
midi B0 14 03
midi B0 14 04
midi B0 14 05
midi B0 14 06
midi B0 14 07
midi B0 14 08
midi B0 14 09
midi B0 14 0A
midi B0 14 0B
midi B0 14 0C
midi B0 14 0D
midi B0 14 0E
midi B0 14 0F
midi B0 14 10
midi B0 14 11
midi B0 14 12
midi B0 14 13
midi B0 14 14
midi B0 14 15
midi B0 14 16
midi B0 14 17
midi B0 14 18
midi B0 14 19
midi B0 14 1A
midi B0 14 1B
midi B0 14 1C
midi B0 14 1D
midi B0 14 1E
midi B0 14 1F
midi B0 14 20
midi B0 14 21
midi B0 14 22
midi B0 14 23
midi B0 14 24
midi B0 14 25
midi B0 14 26
midi B0 14 27
midi B0 14 28
midi B0 14 29
midi B0 14 2A
midi B0 14 2B
midi B0 14 2C
midi B0 14 2D
midi B0 14 2E
midi B0 14 2F
midi B0 14 30
midi B0 14 31
midi B0 14 32
midi B0 14 33
midi B0 14 34
midi B0 14 35
midi B0 14 36
midi B0 14 37
midi B0 14 38
midi B0 14 39
midi B0 14 3A
midi B0 14 3B
midi B0 14 3C
midi B0 14 3D
midi B0 14 3E
midi B0 14 3F
midi B0 14 40
midi B0 14 41
midi B0 14 42
midi B0 14 43
midi B0 14 44
midi B0 14 45
midi B0 14 46
midi B0 14 47
midi B0 14 48
midi B0 14 49
midi B0 14 4A
midi B0 14 4B
midi B0 14 4C
midi B0 14 4D
midi B0 14 4E
midi B0 14 4F
midi B0 14 50
midi B0 14 51
midi B0 14 52
midi B0 14 53
midi B0 14 54
midi B0 14 55
midi B0 14 56
midi B0 14 57
midi B0 14 58
midi B0 14 59
midi B0 14 5A
midi B0 14 5B
midi B0 14 5C
midi B0 14 5D
midi B0 14 5E
midi B0 14 5F
midi B0 14 60
midi B0 14 61
midi B0 14 62
midi B0 14 63
midi B0 14 64
midi B0 14 65
midi B0 14 66
midi B0 14 67
midi B0 14 68
midi B0 14 69
midi B0 14 6A
midi B0 14 6B
midi B0 14 6C
midi B0 14 6D
midi B0 14 6E
midi B0 14 6F
midi B0 14 70
midi B0 14 71
midi B0 14 72
midi B0 14 73
midi B0 14 74
midi B0 14 75
midi B0 14 76
midi B0 14 77
midi B0 14 78
midi B0 14 79
midi B0 14 7A
midi B0 14 7B
midi B0 14 7C
midi B0 14 7D
midi B0 14 7E
midi B0 14 7F
midi B0 14 7F
midi B0 14 7F
midi B0 14 7F
midi B0 14 7D
