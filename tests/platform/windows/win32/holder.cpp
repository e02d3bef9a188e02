// Holds a key, Ctrl, the left button and the transparent arrow, as the program does with a button held and
// the knob touched, prints "ready", and waits to be ended by force. With the argument "release" it lets go of
// all that and ends by itself; with "idle" it never held anything.
#include "engine/platform/windows/win32/Win32CrashRelease.h"
#include "engine/platform/windows/win32/Win32CursorScheme.h"
#include "engine/platform/windows/win32/Win32Input.h"

#include <cstdio>
#include <cstring>
#include <windows.h>

namespace
{

void hold(Win32HeldInput &held, bool down)
{
    for (const std::uint16_t key : {std::uint16_t{VK_CONTROL}, std::uint16_t{'A'}}) {
        held.setKey(key, true);
        Win32Input::sendKey(key, down);
        held.setKey(key, down);
    }
    held.setLeftButton(true);
    Win32Input::sendLeftButton(down);
    held.setLeftButton(down);
    held.setArrowHidden(true);
    Win32CursorScheme(L"C:\\transp.cur").setTransparent(down);
    held.setArrowHidden(down);
}

} // namespace

int main(int argc, char *argv[])
{
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const char *const task = argc > 1 ? argv[1] : "";
    Win32CrashRelease release;
    const DWORD status = release.start();
    if (status != ERROR_SUCCESS) {
        std::printf("no helper: %lu\n", status);
    }
    if (std::strcmp(task, "idle") != 0) {
        hold(release.held(), true);
    }
    std::puts("ready");
    if (std::strcmp(task, "release") == 0) {
        hold(release.held(), false);
        return 7;
    }
    Sleep(INFINITE);
    return 0;
}
