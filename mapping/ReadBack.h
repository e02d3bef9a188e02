#pragma once

#include "mapping/ActionTable.h"

/// What a file of mappings can hold: two records are the same to it when reading back what was written of
/// them gives the same.
namespace ReadBack
{

/// What the reader makes of what the writer writes of @p actions.
ActionTable of(const ActionTable &actions);

/// Whether reading back gives the same of both.
bool isSame(const ActionTable &ones, const ActionTable &others);

/// Whether the knob's controller numbers and encodings, which no file brings back, are the same in @p others
/// wherever @p ones use them.
bool isSameForTheKnob(const ActionTable &ones, const ActionTable &others);

} // namespace ReadBack
