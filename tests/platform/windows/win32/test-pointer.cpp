#include "Check.h"
#include "engine/platform/windows/win32/Win32MouseHook.h"
#include "engine/platform/windows/win32/Win32Pointer.h"

#include <cstdlib>
#include <vector>
#include <windows.h>

namespace
{

void moveByInput(int dx)
{
    INPUT record{};
    record.type = INPUT_MOUSE;
    record.mi.dx = dx;
    record.mi.dwFlags = MOUSEEVENTF_MOVE;
    SendInput(1, &record, sizeof record);
}

void wheelByInput()
{
    INPUT record{};
    record.type = INPUT_MOUSE;
    record.mi.mouseData = WHEEL_DELTA;
    record.mi.dwFlags = MOUSEEVENTF_WHEEL;
    SendInput(1, &record, sizeof record);
}

void handleMessages()
{
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
    }
}

int earlierHookCalls = 0;

LRESULT CALLBACK earlierHook(int code, WPARAM message, LPARAM event)
{
    earlierHookCalls += message == WM_MOUSEMOVE ? 1 : 0;
    return CallNextHookEx(nullptr, code, message, event);
}

} // namespace

TEST(pointerIsWhereItWasMovedTo)
{
    for (const Win32Pointer::Point target : {Win32Pointer::Point{100, 120}, {99, 120}, {0, 0}, {99, 121}}) {
        Win32Pointer::moveTo(target);
        Win32Pointer::Point found;
        CHECK(Win32Pointer::position(found));
        CHECK_EQUAL(found.x, target.x);
        CHECK_EQUAL(found.y, target.y);
    }
}

TEST(screensAreListedWithThePrimaryOneFirst)
{
    const std::vector<Win32Pointer::Rect> screens = Win32Pointer::screens();
    CHECK_EQUAL(screens.size(), 2U);
    CHECK_EQUAL(screens[0].left, 0);
    CHECK_EQUAL(screens[0].top, 0);
    CHECK_EQUAL(screens[0].width, 1024);
    CHECK_EQUAL(screens[0].height, 768);
    CHECK_EQUAL(screens[1].left, 1024);
    CHECK_EQUAL(screens[1].top, 0);
    CHECK_EQUAL(screens[1].width, 800);
    CHECK_EQUAL(screens[1].height, 600);
}

TEST(pointerReachesTheSecondScreen)
{
    Win32Pointer::moveTo({1024 + 700, 500});
    Win32Pointer::Point found;
    CHECK(Win32Pointer::position(found));
    CHECK_EQUAL(found.x, 1724);
    CHECK_EQUAL(found.y, 500);
}

TEST(hookTellsOfEveryMovementInjectedOnesToo)
{
    std::atomic<int> movements{0};
    const Win32MouseHook hook([&movements] { ++movements; });
    CHECK(hook.isInstalled());
    Win32Pointer::moveTo({200, 200});
    handleMessages();
    movements = 0;
    for (int i = 0; i < 3; ++i) {
        moveByInput(1);
        handleMessages();
    }
    CHECK_EQUAL(movements, 3);
}

TEST(hookIgnoresButtonsAndWheel)
{
    std::atomic<int> movements{0};
    const Win32MouseHook hook([&movements] { ++movements; });
    wheelByInput();
    handleMessages();
    CHECK_EQUAL(movements, 0);
}

TEST(hookPassesMovementsOnToEarlierHooks)
{
    const HHOOK earlier = SetWindowsHookExW(WH_MOUSE_LL, earlierHook, nullptr, 0);
    CHECK(earlier != nullptr);
    earlierHookCalls = 0;
    std::atomic<int> movements{0};
    {
        const Win32MouseHook hook([&movements] { ++movements; });
        moveByInput(-1);
        handleMessages();
    }
    UnhookWindowsHookEx(earlier);
    CHECK_EQUAL(movements, 1);
    CHECK_EQUAL(earlierHookCalls, 1);
}

TEST(secondHookStaysUninstalledWhileTheFirstLives)
{
    std::atomic<int> movements{0};
    {
        const Win32MouseHook first([] {});
        {
            const Win32MouseHook second([&movements] { ++movements; });
            CHECK(first.isInstalled());
            CHECK(!second.isInstalled());
        }
        CHECK(first.isInstalled());
    }
    const Win32MouseHook third([&movements] { ++movements; });
    CHECK(third.isInstalled());
    moveByInput(1);
    handleMessages();
    CHECK_EQUAL(movements, 1);
}

TEST(hookThatIsGoneIsNotCalled)
{
    std::atomic<int> movements{0};
    {
        const Win32MouseHook hook([&movements] { ++movements; });
    }
    moveByInput(1);
    handleMessages();
    CHECK_EQUAL(movements, 0);
}

TEST(systemLoadsTheTransparentPointerFile)
{
    const wchar_t *const path = _wgetenv(L"VELTRIX_TRANSPARENT_POINTER");
    CHECK(path != nullptr);
    const auto cursor = static_cast<HCURSOR>(LoadImageW(nullptr, path, IMAGE_CURSOR, 0, 0, LR_LOADFROMFILE));
    CHECK(cursor != nullptr);
    ICONINFO info{};
    CHECK(GetIconInfo(cursor, &info));
    CHECK(!info.fIcon);
    CHECK_EQUAL(info.xHotspot, 0U);
    CHECK_EQUAL(info.yHotspot, 0U);
    CHECK(info.hbmColor == nullptr);
    // The AND mask above the XOR mask.
    std::vector<unsigned char> bits(256);
    CHECK_EQUAL(GetBitmapBits(info.hbmMask, 256, bits.data()), 256);
    for (std::size_t i = 0; i < bits.size(); ++i) {
        CHECK_EQUAL(int(bits[i]), i < 128 ? 0xFF : 0x00);
    }
    DestroyCursor(cursor);
}
