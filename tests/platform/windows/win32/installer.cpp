// Stands in for a new version's installer: writes to C:\updated.txt that it was run, and whether whoever has
// started it shows a console.
#include <cstdio>
#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    AttachConsole(ATTACH_PARENT_PROCESS);
    const HWND console = GetConsoleWindow();
    const bool shown = console != nullptr && IsWindowVisible(console);
    std::FILE *const file = std::fopen("C:\\updated.txt.new", "wb");
    if (file == nullptr) {
        return 1;
    }
    std::fprintf(file, "installed, %s console shown\n", shown ? "a" : "no");
    std::fclose(file);
    return MoveFileW(L"C:\\updated.txt.new", L"C:\\updated.txt") ? 0 : 1;
}
