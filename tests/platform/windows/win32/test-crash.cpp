#include "Check.h"
#include "Child.h"
#include "engine/platform/windows/win32/Win32CrashRelease.h"
#include "engine/platform/windows/win32/Win32CursorScheme.h"

#include <algorithm>
#include <tlhelp32.h>

namespace
{

const Win32RegistryText &arrow()
{
    static const Win32RegistryText value(HKEY_CURRENT_USER, L"Control Panel\\Cursors", L"Arrow");
    return value;
}

/// The helper of a program, 0 for none.
DWORD helperOf(DWORD program)
{
    DWORD found = 0;
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(all, &entry); more; more = Process32NextW(all, &entry)) {
        if (entry.th32ParentProcessID == program &&
            wcscmp(entry.szExeFile, Win32CrashRelease::helperName) == 0) {
            found = entry.th32ProcessID;
        }
    }
    CloseHandle(all);
    return found;
}

/// A process' handle, closed with the object.
class Process
{
public:
    explicit Process(DWORD id)
        : handle(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_SUSPEND_RESUME |
                                 PROCESS_QUERY_INFORMATION,
                             FALSE, id))
    {
    }
    ~Process() { CloseHandle(handle); }
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    bool endsWithin(DWORD ms) const { return WaitForSingleObject(handle, ms) == WAIT_OBJECT_0; }

    const HANDLE handle;
};

long long milliseconds()
{
    LARGE_INTEGER now{};
    LARGE_INTEGER perSecond{};
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&perSecond);
    return now.QuadPart * 1000 / perSecond.QuadPart;
}

} // namespace

TEST(whatAKilledProgramHeldIsReleasedWithin50Milliseconds)
{
    long long best = 10000;
    for (int round = 0; round < 5; ++round) {
        Child watcher(L"win32_watcher.exe");
        Child holder(L"win32_holder.exe");
        CHECK_EQUAL(holder.lines("no helper").size(), 0U);
        CHECK_EQUAL(watcher.waitForLines("hook", 3).size(), 3U);
        CHECK(Win32CursorScheme(L"C:\\transp.cur").isTransparent());
        watcher.forgetLines();
        const Process program(holder.processId());
        const Process helper(helperOf(holder.processId()));
        CHECK(!helper.endsWithin(0));

        const long long before = milliseconds();
        TerminateProcess(program.handle, 9);
        CHECK_EQUAL(watcher.waitForLines("hook", 3).size(), 3U);
        best = std::min(best, milliseconds() - before);
        CHECK_EQUAL(watcher.lines("hook key 162 up").size() + watcher.lines("hook key 17 up").size(), 1U);
        CHECK_EQUAL(watcher.lines("hook key 65 up").size(), 1U);
        CHECK_EQUAL(watcher.lines("hook left up").size(), 1U);
        CHECK(helper.endsWithin(3000));
        CHECK_EQUAL(arrow().read().value_or(L""), Win32CursorScheme::systemArrow);
    }
    printf("         released %lld ms after the end (best of 5)\n", best);
    CHECK(best <= 50);
}

TEST(aProgramThatEndsByItselfLeavesNoHelper)
{
    Child watcher(L"win32_watcher.exe");
    Child holder(L"win32_holder.exe", L"release");
    CHECK_EQUAL(holder.exitCode(), 7U);
    CHECK_EQUAL(helperOf(holder.processId()), 0U); // its end waits for that
    CHECK_EQUAL(watcher.waitForLines("hook", 6).size(), 6U);
    Sleep(100);
    CHECK_EQUAL(watcher.lines("hook").size(), 6U); // nothing was released twice
}

TEST(aKilledProgramThatHeldNothingReleasesNothing)
{
    Child watcher(L"win32_watcher.exe");
    CHECK_EQUAL(arrow().write(L"C:\\mine.cur", REG_SZ), ERROR_SUCCESS);
    Child holder(L"win32_holder.exe", L"idle");
    const Process program(holder.processId());
    const Process helper(helperOf(holder.processId()));
    TerminateProcess(program.handle, 9);
    CHECK(helper.endsWithin(3000));
    Sleep(100);
    CHECK_EQUAL(watcher.lines("hook").size(), 0U);
    CHECK_EQUAL(arrow().read().value_or(L""), L"C:\\mine.cur");
    CHECK_EQUAL(arrow().write(Win32CursorScheme::systemArrow, REG_EXPAND_SZ), ERROR_SUCCESS);
}

TEST(theHelperKeepsNoOutputAndNoConsoleOfTheProgram)
{
    using Suspend = LONG(NTAPI *)(HANDLE);
    const HMODULE kernel = GetModuleHandleW(L"ntdll.dll");
    const auto suspend =
        reinterpret_cast<Suspend>(reinterpret_cast<void *>(GetProcAddress(kernel, "NtSuspendProcess")));
    const auto resume =
        reinterpret_cast<Suspend>(reinterpret_cast<void *>(GetProcAddress(kernel, "NtResumeProcess")));
    Child holder(L"win32_holder.exe", L"idle");
    const DWORD helperId = helperOf(holder.processId());
    const Process helper(helperId);
    FreeConsole();
    CHECK(!AttachConsole(helperId));
    // Held back, so that what it had inherited would stay open.
    suspend(helper.handle);
    const Process program(holder.processId());
    TerminateProcess(program.handle, 9);
    const bool outputEnded = holder.waitForEndOfOutput();
    resume(helper.handle);
    CHECK(outputEnded);
    CHECK(helper.endsWithin(3000));
}

TEST(aMissingHelperIsTold)
{
    Win32CrashRelease release;
    const std::wstring folder = Check::programFolder();
    const std::wstring helper = folder + Win32CrashRelease::helperName;
    CHECK(MoveFileW(helper.c_str(), (helper + L".away").c_str()));
    const DWORD status = release.start();
    CHECK(MoveFileW((helper + L".away").c_str(), helper.c_str()));
    CHECK_EQUAL(status, DWORD(ERROR_FILE_NOT_FOUND));
    release.held().setKey('A', true); // goes nowhere, and does no harm
    CHECK(release.held().key('A'));
}
