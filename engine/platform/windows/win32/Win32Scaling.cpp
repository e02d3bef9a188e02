#include "engine/platform/windows/win32/Win32Scaling.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <windows.h>

namespace
{

// In a library that Windows 7 lacks; there every screen has the desktop's resolution.
using GetDpiForMonitor = HRESULT(WINAPI *)(HMONITOR, int, UINT *, UINT *);

unsigned desktopDpi()
{
    const HDC desktop = GetDC(nullptr);
    const int dpi = GetDeviceCaps(desktop, LOGPIXELSX);
    ReleaseDC(nullptr, desktop);
    return static_cast<unsigned>(std::max(dpi, 96));
}

unsigned dpiOf(HMONITOR monitor)
{
    static const auto function = [] {
        const HMODULE library = LoadLibraryW(L"shcore.dll");
        return library == nullptr ? nullptr
                                  : reinterpret_cast<GetDpiForMonitor>(reinterpret_cast<void *>(
                                        GetProcAddress(library, "GetDpiForMonitor")));
    }();
    UINT horizontal = 0;
    UINT vertical = 0;
    if (function == nullptr || FAILED(function(monitor, 0, &horizontal, &vertical)) || horizontal == 0) {
        return desktopDpi();
    }
    return horizontal;
}

BOOL CALLBACK addScreen(HMONITOR monitor, HDC, LPRECT, LPARAM list)
{
    MONITORINFOEXW info{};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info)) {
        const RECT &area = info.rcWork;
        reinterpret_cast<std::vector<Win32Scaling::Screen> *>(list)->push_back(
            {info.szDevice, area.right - area.left, area.bottom - area.top, dpiOf(monitor)});
    }
    return TRUE;
}

} // namespace

namespace Win32Scaling
{

std::vector<Screen> screens()
{
    std::vector<Screen> screens;
    EnumDisplayMonitors(nullptr, nullptr, addScreen, reinterpret_cast<LPARAM>(&screens));
    return screens;
}

std::string cappedFactors(const std::vector<Screen> &screens, int windowWidth, int windowHeight)
{
    std::string factors;
    for (const Screen &screen : screens) {
        const double fits = std::min(static_cast<double>(screen.width) / windowWidth,
                                     static_cast<double>(screen.height) / windowHeight);
        if (screen.dpi / 96.0 <= fits || screen.width <= 0 || screen.height <= 0) {
            continue;
        }
        // Hundredths, rounded down.
        const int hundredths = static_cast<int>(std::floor(fits * 100));
        char number[16];
        std::snprintf(number, sizeof number, "=%d.%02d", hundredths / 100, hundredths % 100);
        factors += factors.empty() ? "" : ";";
        factors.append(screen.name.begin(), screen.name.end());
        factors += number;
    }
    return factors;
}

} // namespace Win32Scaling
