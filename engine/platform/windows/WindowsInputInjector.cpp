#include "engine/platform/windows/WindowsInputInjector.h"

#include "engine/platform/windows/win32/Win32Input.h"

void WindowsInputInjector::sendKey(quint16 virtualKey, bool down)
{
    Win32Input::sendKey(virtualKey, down);
}

void WindowsInputInjector::sendLeftButton(bool down)
{
    Win32Input::sendLeftButton(down);
}
