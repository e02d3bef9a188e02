#pragma once

#include "tests/support/script/Script.h"

#include <QStringList>

class Desk;

/// What the real program did for a script.
struct Played {
    QString error;         ///< what kept the script from being played; empty when nothing did
    QStringList desktop;   ///< keys, left button and movements, as another program's window saw them
    QStringList midi;      ///< messages, as another program's MIDI port got them
    QStringList log;       ///< the program's log
    bool leftOver = false; ///< something was still held when the program had ended
};

namespace scriptplayer
{

/// Why a script cannot be played on the real program; empty when it can.
QString obstacle(const Script &script);

/// Starts the program and the virtual device at @p desk (whose screens are the script's), plays the script,
/// ends the program with SIGTERM. Needs no event loop.
Played play(const Script &script, Desk &desk);

} // namespace scriptplayer
