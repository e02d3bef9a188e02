#include "engine/platform/windows/win32/Win32Input.h"

#include <windows.h>

namespace
{

bool send(INPUT &record)
{
    return SendInput(1, &record, sizeof(INPUT)) == 1;
}

} // namespace

namespace Win32Input
{

bool sendKey(std::uint16_t virtualKey, bool down)
{
    INPUT record{};
    record.type = INPUT_KEYBOARD;
    record.ki.wVk = virtualKey;
    record.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    return send(record);
}

bool sendLeftButton(bool down)
{
    INPUT record{};
    record.type = INPUT_MOUSE;
    record.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
    return send(record);
}

} // namespace Win32Input
