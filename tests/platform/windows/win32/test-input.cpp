#include "Check.h"
#include "Child.h"
#include "engine/platform/windows/win32/Win32Input.h"
#include "engine/platform/windows/win32/Win32Pointer.h"

#include <numeric>

namespace
{

std::string joined(const std::vector<std::string> &lines)
{
    return std::accumulate(lines.begin(), lines.end(), std::string(),
                           [](const std::string &all, const std::string &line) { return all + line + "; "; });
}

} // namespace

TEST(shortcutArrivesInOrderAndIsReleasedInTheSameOrder)
{
    Child watcher(L"win32_watcher.exe");
    for (const bool down : {true, false}) {
        for (const std::uint16_t code : std::initializer_list<std::uint16_t>{0x11, 0x10, 0x53}) {
            Win32Input::sendKey(code, down);
        }
    }
    CHECK_EQUAL(joined(watcher.waitForLines("window", 6)),
                "window key 17 down; window key 16 down; window key 83 down; "
                "window key 17 up; window key 16 up; window key 83 up; ");
}

TEST(keyRecordHasTheCodeAndNothingElse)
{
    Child watcher(L"win32_watcher.exe");
    Win32Input::sendKey(VK_F13, true);
    Win32Input::sendKey(VK_F13, false);
    CHECK_EQUAL(joined(watcher.waitForLines("hook", 2)),
                "hook key 124 down scan 0 injected extra 0; hook key 124 up scan 0 injected extra 0; ");
}

TEST(arrowTapIsDownThenUp)
{
    Child watcher(L"win32_watcher.exe");
    for (const std::uint16_t arrow :
         std::initializer_list<std::uint16_t>{VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN}) {
        watcher.forgetLines();
        Win32Input::sendKey(arrow, true);
        Win32Input::sendKey(arrow, false);
        const std::string key = "window key " + std::to_string(arrow);
        CHECK_EQUAL(joined(watcher.waitForLines("window", 2)), key + " down; " + key + " up; ");
    }
}

TEST(keyHeldDownDoesNotRepeat)
{
    Child watcher(L"win32_watcher.exe");
    Win32Input::sendKey('A', true);
    watcher.waitForLines("window", 1);
    Sleep(1000);
    CHECK_EQUAL(joined(watcher.lines("window")), "window key 65 down; ");
    Win32Input::sendKey('A', false);
    CHECK_EQUAL(joined(watcher.waitForLines("window", 2)), "window key 65 down; window key 65 up; ");
}

TEST(everyCodeThatAShortcutCanHoldArrivesAsItself)
{
    Child watcher(L"win32_watcher.exe");
    for (std::uint16_t code = 0x08; code <= 0xFE; ++code) {
        // The system turns these into others for the hook: modifiers into their left ones, and Alt and the
        // Windows keys, Escape and Tab start actions of the desktop in combination.
        if (code == VK_SHIFT || code == VK_CONTROL || code == VK_MENU || code == VK_PACKET) {
            continue;
        }
        watcher.forgetLines();
        Win32Input::sendKey(code, true);
        Win32Input::sendKey(code, false);
        const std::string key = "hook key " + std::to_string(code);
        CHECK_EQUAL(joined(watcher.waitForLines("hook", 2)),
                    key + " down scan 0 injected extra 0; " + key + " up scan 0 injected extra 0; ");
    }
}

TEST(leftButtonGoesDownAndUp)
{
    Child watcher(L"win32_watcher.exe");
    Win32Pointer::moveTo({50, 60});
    Win32Input::sendLeftButton(true);
    CHECK_EQUAL(joined(watcher.waitForLines("window", 1)), "window left down; ");
    CHECK((GetAsyncKeyState(VK_LBUTTON) & 0x8000) != 0);
    Win32Input::sendLeftButton(false);
    CHECK_EQUAL(joined(watcher.waitForLines("window", 2)), "window left down; window left up; ");
    CHECK_EQUAL(joined(watcher.lines("hook")), "hook left down injected; hook left up injected; ");
}
