#include "midi/MidiLog.h"

Q_LOGGING_CATEGORY(lcMidi, "veltrix.midi", QtInfoMsg)
