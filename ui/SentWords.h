#pragma once

#include <QString>

struct DoneAction;

/// What an event of the device did, in a few words: "3 · Ctrl + Shift + S", "7 · note 60 on, channel 1",
/// "knob · Up".
namespace SentWords
{

/// Empty for what is not worth a word: the release of keys, and the end of a touch.
QString of(const DoneAction &done);

} // namespace SentWords
