#include "Check.h"
#include "Child.h"
#include "engine/platform/windows/win32/Win32QuitWatch.h"

namespace
{

HWND hiddenWindowOf(const Child &child)
{
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, Win32QuitWatch::windowClass, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == child.processId()) {
            return window;
        }
    }
    return nullptr;
}

bool answers(HWND window, UINT message, WPARAM wParam, DWORD_PTR &answer)
{
    return SendMessageTimeoutW(window, message, wParam, 0, SMTO_NORMAL, 2500, &answer) != 0;
}

} // namespace

TEST(endOfSessionWaitsUntilTheProgramHasEndedItsOwnWay)
{
    Child quitter(L"win32_quitter.exe");
    const HWND window = hiddenWindowOf(quitter);
    CHECK(window != nullptr);
    CHECK(!IsWindowVisible(window));
    DWORD_PTR answer = 0;
    CHECK(answers(window, WM_QUERYENDSESSION, 0, answer));
    CHECK_EQUAL(answer, DWORD_PTR(TRUE));
    CHECK(quitter.lines("asked").empty());

    CHECK(!answers(window, WM_ENDSESSION, TRUE, answer));
    CHECK_EQUAL(quitter.exitCode(), 5U);
    CHECK_EQUAL(quitter.waitForLines("ended", 1).size(), 1U);
    CHECK_EQUAL(quitter.lines("broadcast").at(0), "broadcast");
}

TEST(sessionThatGoesOnAfterAllLeavesTheProgramRunning)
{
    Child quitter(L"win32_quitter.exe");
    DWORD_PTR answer = 1;
    CHECK(answers(hiddenWindowOf(quitter), WM_ENDSESSION, FALSE, answer));
    CHECK(answers(hiddenWindowOf(quitter), WM_NULL, 0, answer));
    CHECK(quitter.lines("asked").empty());
}

TEST(closeRequestEndsTheProgram)
{
    Child quitter(L"win32_quitter.exe");
    PostMessageW(hiddenWindowOf(quitter), WM_CLOSE, 0, 0);
    CHECK_EQUAL(quitter.exitCode(), 5U);
    CHECK_EQUAL(quitter.waitForLines("asked", 1).size(), 1U);
}

TEST(controlCEndsTheProgram)
{
    Child quitter(L"win32_quitter.exe", L"interrupted");
    CHECK_EQUAL(quitter.exitCode(), 5U);
    CHECK_EQUAL(quitter.waitForLines("ended", 1).size(), 1U);
}

TEST(watchCanBeMadeAgain)
{
    for (int i = 0; i < 3; ++i) {
        const Win32QuitWatch watch([] {});
        CHECK(FindWindowW(Win32QuitWatch::windowClass, nullptr) != nullptr);
    }
    CHECK(FindWindowW(Win32QuitWatch::windowClass, nullptr) == nullptr);
}
