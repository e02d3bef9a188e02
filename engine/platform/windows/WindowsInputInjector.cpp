#include "engine/platform/windows/WindowsInputInjector.h"

#include "engine/platform/windows/WindowsCrashRelease.h"
#include "engine/platform/windows/win32/Win32Input.h"

void WindowsInputInjector::sendKey(quint16 virtualKey, bool down)
{
    Win32HeldInput &held = WindowsCrashRelease::heldInput();
    if (down) {
        held.setKey(virtualKey, true);
    }
    Win32Input::sendKey(virtualKey, down);
    if (!down) {
        held.setKey(virtualKey, false);
    }
}

void WindowsInputInjector::sendLeftButton(bool down)
{
    Win32HeldInput &held = WindowsCrashRelease::heldInput();
    if (down) {
        held.setLeftButton(true);
    }
    Win32Input::sendLeftButton(down);
    if (!down) {
        held.setLeftButton(false);
    }
}
