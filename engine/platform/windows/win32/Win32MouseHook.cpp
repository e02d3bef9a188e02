#include "engine/platform/windows/win32/Win32MouseHook.h"

#include <utility>
#include <windows.h>

namespace
{

// The hook procedure gets no context argument.
HHOOK hookHandle = nullptr;
const Win32MouseHook *hookInstance = nullptr;

LRESULT CALLBACK hookProcedure(int code, WPARAM message, LPARAM event)
{
    if (code == HC_ACTION && message == WM_MOUSEMOVE && hookInstance != nullptr) {
        hookInstance->report();
    }
    return CallNextHookEx(hookHandle, code, message, event);
}

} // namespace

Win32MouseHook::Win32MouseHook(std::function<void()> moved)
    : m_moved(std::move(moved))
{
    if (hookInstance != nullptr) {
        return;
    }
    hookHandle = SetWindowsHookExW(WH_MOUSE_LL, hookProcedure, nullptr, 0);
    if (hookHandle != nullptr) {
        hookInstance = this;
    }
}

Win32MouseHook::~Win32MouseHook()
{
    if (!isInstalled()) {
        return;
    }
    UnhookWindowsHookEx(hookHandle);
    hookHandle = nullptr;
    hookInstance = nullptr;
}

bool Win32MouseHook::isInstalled() const
{
    return hookInstance == this;
}
