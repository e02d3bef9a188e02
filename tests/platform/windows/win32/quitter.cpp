// Runs until the system asks it to end, then takes its time, broadcasts as a reload of the pointer scheme
// does, and ends with status 5. With the argument "interrupted" it makes a console of its own and presses
// Ctrl+C in it.
#include "engine/platform/windows/win32/Win32QuitWatch.h"

#include <cstdio>
#include <cstring>
#include <windows.h>

int main(int argc, char *argv[])
{
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const bool interrupted = argc > 1 && std::strcmp(argv[1], "interrupted") == 0;
    if (interrupted) {
        FreeConsole();
        AllocConsole();
    }
    const HANDLE asked = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    {
        const Win32QuitWatch watch([asked] { SetEvent(asked); });
        std::puts("ready");
        if (interrupted) {
            GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
        }
        WaitForSingleObject(asked, INFINITE);
        std::puts("asked");
    }
    Sleep(300);
    const ULONGLONG before = GetTickCount64();
    DWORD_PTR result = 0;
    SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, 0, SMTO_ABORTIFHUNG, 2000, &result);
    std::puts(GetTickCount64() - before < 1000 ? "broadcast" : "broadcast was held up");
    std::puts("ended");
    return 5;
}
