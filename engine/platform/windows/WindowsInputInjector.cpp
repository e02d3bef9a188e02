#include "engine/platform/windows/WindowsInputInjector.h"

#include "engine/platform/windows/WindowsCrashRelease.h"
#include "engine/platform/windows/win32/Win32Input.h"

#include <utility>

WindowsInputInjector::WindowsInputInjector(std::shared_ptr<RefusedInput> refused)
    : m_refused(std::move(refused))
{
}

void WindowsInputInjector::sendKey(quint16 virtualKey, bool down)
{
    Win32HeldInput &held = WindowsCrashRelease::heldInput();
    if (down) {
        held.setKey(virtualKey, true);
    }
    m_refused->note(Win32Input::sendKey(virtualKey, down));
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
    m_refused->note(Win32Input::sendLeftButton(down));
    if (!down) {
        held.setLeftButton(false);
    }
}
