#include "engine/platform/windows/win32/Win32Pointer.h"

#include <cwchar>
#include <windows.h>

namespace
{

BOOL CALLBACK addScreen(HMONITOR monitor, HDC, LPRECT, LPARAM list)
{
    auto &screens = *reinterpret_cast<std::vector<Win32Pointer::Rect> *>(list);
    MONITORINFOEXW info{};
    info.cbSize = sizeof info;
    if (!GetMonitorInfoW(monitor, &info)) {
        return TRUE;
    }
    // A session without a screen (locked, disconnected) shows this stand-in.
    if (std::wcscmp(info.szDevice, L"WinDisc") == 0) {
        return TRUE;
    }
    const RECT &area = info.rcMonitor;
    const Win32Pointer::Rect rect{area.left, area.top, area.right - area.left, area.bottom - area.top};
    const bool primary = (info.dwFlags & MONITORINFOF_PRIMARY) != 0;
    screens.insert(primary ? screens.begin() : screens.end(), rect);
    return TRUE;
}

} // namespace

namespace Win32Pointer
{

bool position(Point &position)
{
    POINT point{};
    if (!GetCursorPos(&point)) {
        return false;
    }
    position = {point.x, point.y};
    return true;
}

void moveTo(Point position)
{
    SetCursorPos(position.x, position.y);
}

std::vector<Rect> screens()
{
    std::vector<Rect> screens;
    EnumDisplayMonitors(nullptr, nullptr, addScreen, reinterpret_cast<LPARAM>(&screens));
    if (screens.empty()) {
        screens.push_back({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
    }
    return screens;
}

} // namespace Win32Pointer
