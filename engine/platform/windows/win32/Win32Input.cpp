#include "engine/platform/windows/win32/Win32Input.h"

#include <windows.h>

namespace
{

void send(INPUT &record)
{
    SendInput(1, &record, sizeof(INPUT));
}

} // namespace

namespace Win32Input
{

void sendKey(std::uint16_t virtualKey, bool down)
{
    INPUT record{};
    record.type = INPUT_KEYBOARD;
    record.ki.wVk = virtualKey;
    record.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    send(record);
}

void sendLeftButton(bool down)
{
    INPUT record{};
    record.type = INPUT_MOUSE;
    record.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
    send(record);
}

} // namespace Win32Input
