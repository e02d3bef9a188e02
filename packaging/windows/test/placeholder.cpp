// Tells the version that Windows would show of this file and whether it has an icon; with an argument it then
// stays.
#include <iostream>
#include <string>
#include <vector>
#include <windows.h>

int main(int argc, char **)
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::vector<char> information(GetFileVersionInfoSizeW(path, nullptr));
    char *version = nullptr;
    UINT length = 0;
    if (information.empty() ||
        GetFileVersionInfoW(path, 0, static_cast<DWORD>(information.size()), information.data()) == 0 ||
        VerQueryValueA(information.data(), "\\StringFileInfo\\040904b0\\ProductVersion",
                       reinterpret_cast<void **>(&version), &length) == 0) {
        std::cout << "no version" << std::endl;
        return 1;
    }
    const bool icon = LoadIconA(GetModuleHandleA(nullptr), "IDI_ICON1") != nullptr;
    std::cout << "version " << std::string(version) << (icon ? ", icon" : ", no icon") << std::endl;
    if (argc > 1) {
        Sleep(60000);
    }
    return 0;
}
