#include "Check.h"
#include "Child.h"
#include "engine/platform/windows/win32/Win32ForegroundWatch.h"

#include <string>
#include <vector>

namespace
{

const std::wstring programName = L"\\win32_window.exe";

bool isTheProgram(const std::wstring &path)
{
    return path.size() > programName.size() &&
           path.compare(path.size() - programName.size(), programName.size(), programName) == 0;
}

// Handles this thread's messages until something was told, for three seconds at most.
void waitForNews(const std::vector<std::wstring> &told)
{
    const ULONGLONG end = GetTickCount64() + 3000;
    while (told.empty() && GetTickCount64() < end) {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
}

HWND ownWindow()
{
    const HWND window = CreateWindowW(L"STATIC", L"Ours", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 100, 100,
                                      100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetForegroundWindow(window);
    return window;
}

} // namespace

TEST(programThatComesToTheForegroundIsTold)
{
    std::vector<std::wstring> told;
    const Win32ForegroundWatch watch([&told](const std::wstring &path) { told.push_back(path); });
    CHECK(watch.isInstalled());
    const Child child(L"win32_window.exe");
    waitForNews(told);
    CHECK(!told.empty());
    CHECK(isTheProgram(told.back()));
    CHECK(isTheProgram(Win32ForegroundWatch::current()));
}

TEST(ownWindowIsNotToldAndTheOneBeforeIsFound)
{
    const Child child(L"win32_window.exe");
    std::vector<std::wstring> told;
    const Win32ForegroundWatch watch([&told](const std::wstring &path) { told.push_back(path); });
    const HWND own = ownWindow();
    CHECK(GetForegroundWindow() == own);
    MSG message{};
    for (int i = 0; i < 20; ++i) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
        Sleep(10);
    }
    CHECK(told.empty());
    CHECK(isTheProgram(Win32ForegroundWatch::current()));
    DestroyWindow(own);
}

TEST(windowThatIsNoneHasNoProgram)
{
    CHECK(Win32ForegroundWatch::executableOf(nullptr).empty());
    const HWND own = ownWindow();
    CHECK(Win32ForegroundWatch::executableOf(own).empty());
    DestroyWindow(own);
    CHECK(Win32ForegroundWatch::executableOf(own).empty());
    CHECK(Win32ForegroundWatch::executableOf(GetDesktopWindow()).empty());
}

TEST(watchThatIsGoneTellsNothing)
{
    std::vector<std::wstring> told;
    {
        const Win32ForegroundWatch first([&told](const std::wstring &path) { told.push_back(path); });
        const Win32ForegroundWatch second([&told](const std::wstring &path) { told.push_back(path); });
        CHECK(first.isInstalled());
        CHECK(!second.isInstalled());
    }
    const Child child(L"win32_window.exe");
    MSG message{};
    for (int i = 0; i < 20; ++i) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
        Sleep(10);
    }
    CHECK(told.empty());
}
