#include "engine/platform/windows/WindowsCrashRelease.h"

#include "engine/platform/windows/win32/Win32CrashRelease.h"

namespace
{

DWORD startStatus = ERROR_SUCCESS;

Win32CrashRelease &release()
{
    static Win32CrashRelease instance;
    return instance;
}

} // namespace

void WindowsCrashRelease::start()
{
    startStatus = release().start();
}

Win32HeldInput &WindowsCrashRelease::heldInput()
{
    return release().held();
}

QString WindowsCrashRelease::problem()
{
    return startStatus == ERROR_SUCCESS ? QString() : QStringLiteral("error %1").arg(startStatus);
}
