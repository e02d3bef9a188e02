#pragma once

#include "mapping/Layer.h"

#include <QString>

/// The names under which the action menus keep one control's assignments in the user's settings, for example
/// "tonAction.Shift1.label" for control 3.
///
/// | field                     | meaning                                        | stored as |
/// |---------------------------|------------------------------------------------|-----------|
/// | "key1" "key2" "key3"      | the codes or markers of the shortCut           | int       |
/// | "label"                   | the text shown                                 | string    |
/// | "channel" "cc"            | MIDI channel, note or controller number        | int       |
/// | "note"                    | notes rather than control changes              | bool      |
/// | "on_touch" "after_touch"  | MIDI values on press and on release            | int       |
/// | "after_touch_on"          | a release sends a message                      | bool      |
/// | "knobcc"                  | the knob's controller number                   | int       |
/// | "m01h" "m3fh" "m0_127"    | the knob's encoding                            | bool      |
///
/// In Shift 2 the values on press and on release are read from "value_on" and "value_off" instead. The
/// difference is deliberate: stores hold the values under these names.
namespace ActionKeys
{

enum class Purpose { Reading, Writing };

/// The control's part of a key: the tail of "ButtonAction" that begins at the control's number
/// ("ButtonAction" for 0, "ion" for 9), clipped like this on purpose. Empty for a number outside 0 to 9.
QString prefix(int control);

/// The whole key, or an empty text for a control that does not exist.
QString key(int control, Layer layer, const QString &field);

/// The field that holds the MIDI value on press, in this layer and for this purpose.
QString pressValueField(Layer layer, Purpose purpose);

/// The field that holds the MIDI value on release.
QString releaseValueField(Layer layer, Purpose purpose);

} // namespace ActionKeys
