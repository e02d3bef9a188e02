#pragma once

#include <QString>

struct DoneAction;

/// What an event of the device did, in a few words: "3 · Ctrl + Shift + S", "7 · note 60 on, channel 1",
/// "knob · Up".
namespace SentWords
{

/// Whether it is worth a word: the release of keys, a touch that does nothing yet and its end are not.
bool has(const DoneAction &done);

/// Empty for what has no words.
QString of(const DoneAction &done);

} // namespace SentWords
