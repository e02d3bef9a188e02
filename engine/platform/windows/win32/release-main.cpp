// veltrix-release: started by the program, releases what it holds when it is ended by force.
#include "engine/platform/windows/win32/Win32CrashRelease.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    return Win32CrashRelease::watch(GetCommandLineW());
}
