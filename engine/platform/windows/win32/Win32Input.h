#pragma once

#include <cstdint>

/// Keyboard and mouse-button input put into the system's input queue with SendInput, one record a call.
///
/// An event that the system refuses (an elevated window in front, a locked session) is lost. Both return
/// whether it took the event.
namespace Win32Input
{

/// @p virtualKey is sent as a code, without a scan code: the mapping stores codes, and which key of which
/// keyboard makes them is not known. Programs that read scan codes only do not see such an event.
bool sendKey(std::uint16_t virtualKey, bool down);

/// The primary button unless the user has swapped the buttons; then the system takes it for the other one.
bool sendLeftButton(bool down);

} // namespace Win32Input
