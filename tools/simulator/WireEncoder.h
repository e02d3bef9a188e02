#pragma once

#include <QByteArray>

/// The virtual device's side of the wire: one report, one message. Deliberately shares nothing with the
/// program's decoder, so that a mistake in one of the two cannot hide in the other.
namespace simulator::wire
{

/// What ends every message.
inline constexpr char terminator[] = "\n\r\n";

/// A button went down or up. @p button is 0 to 9.
QByteArray button(int button, bool pressed);

/// A knob event: 'D' touched, 'U' let go, 'L' and 'R' one step; the wire carries any other character as well.
QByteArray knob(char type);

/// A bare number.
QByteArray count(int value);

} // namespace simulator::wire
