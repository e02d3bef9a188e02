#include "engine/platform/windows/win32/Win32CrashRelease.h"

#include "engine/platform/windows/win32/Win32CursorScheme.h"
#include "engine/platform/windows/win32/Win32Input.h"

#include <array>
#include <cwchar>
#include <new>
#include <vector>

const wchar_t Win32CrashRelease::helperName[] = L"veltrix-release.exe";

namespace
{

constexpr DWORD helperPatience = 1000; // ms

std::wstring programFolder()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(2 * path.size());
    }
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

std::wstring systemFolder()
{
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetSystemDirectoryW(path.data(), MAX_PATH));
    return path;
}

/// Handles are numbers that a child process inherits unchanged, and fit into 32 bits.
std::wstring number(HANDLE handle)
{
    return std::to_wstring(static_cast<unsigned long>(reinterpret_cast<ULONG_PTR>(handle)));
}

HANDLE handleFrom(const wchar_t *&text)
{
    wchar_t *end = nullptr;
    const unsigned long value = std::wcstoul(text, &end, 10);
    text = end;
    return reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(value));
}

/// The list of the only handles that a new process gets.
class InheritedHandles
{
public:
    explicit InheritedHandles(std::vector<HANDLE> handles)
        : m_handles(std::move(handles))
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_memory.resize(size);
        m_valid = InitializeProcThreadAttributeList(list(), 1, 0, &size) &&
                  UpdateProcThreadAttribute(list(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_handles.data(),
                                            m_handles.size() * sizeof(HANDLE), nullptr, nullptr);
    }
    ~InheritedHandles()
    {
        if (m_valid) {
            DeleteProcThreadAttributeList(list());
        }
    }

    InheritedHandles(const InheritedHandles &) = delete;
    InheritedHandles &operator=(const InheritedHandles &) = delete;

    bool isValid() const { return m_valid; }
    LPPROC_THREAD_ATTRIBUTE_LIST list()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.data());
    }

private:
    std::vector<HANDLE> m_handles;
    std::vector<char> m_memory;
    bool m_valid = false;
};

void release(const Win32HeldInput &held)
{
    for (std::uint16_t key = 0; key < Win32HeldInput::keyCount; ++key) {
        if (held.key(key)) {
            Win32Input::sendKey(key, false);
        }
    }
    if (held.leftButton()) {
        Win32Input::sendLeftButton(false);
    }
    if (held.arrowHidden()) {
        Win32CursorScheme(std::wstring()).setTransparent(false);
    }
}

} // namespace

DWORD Win32CrashRelease::start()
{
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE self = nullptr;
    const HANDLE page = CreateFileMappingW(INVALID_HANDLE_VALUE, &inherited, PAGE_READWRITE, 0,
                                           sizeof(Win32HeldInput), nullptr);
    m_over = CreateEventW(&inherited, TRUE, FALSE, nullptr);
    void *memory = page != nullptr ? MapViewOfFile(page, FILE_MAP_ALL_ACCESS, 0, 0, 0) : nullptr;
    PROCESS_INFORMATION process{};
    DWORD status = ERROR_SUCCESS;
    if (memory == nullptr || m_over == nullptr ||
        !DuplicateHandle(GetCurrentProcess(), GetCurrentProcess(), GetCurrentProcess(), &self, SYNCHRONIZE,
                         TRUE, 0)) {
        status = GetLastError();
    } else {
        InheritedHandles handles({self, m_over, page});
        STARTUPINFOEXW startup{};
        startup.StartupInfo.cb = sizeof startup;
        startup.lpAttributeList = handles.list();
        const std::wstring path = programFolder() + helperName;
        const std::wstring folder = systemFolder(); // the program's own can be removed meanwhile
        std::wstring command =
            L"veltrix-release " + number(self) + L' ' + number(m_over) + L' ' + number(page);
        auto *shared = new (memory) Win32HeldInput;
        if (handles.isValid() && CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, TRUE,
                                                DETACHED_PROCESS | EXTENDED_STARTUPINFO_PRESENT, nullptr,
                                                folder.c_str(), &startup.StartupInfo, &process)) {
            m_shared = shared;
            m_helper = process.hProcess;
            CloseHandle(process.hThread);
        } else {
            status = GetLastError();
        }
    }
    for (const HANDLE handle : {self, page}) {
        if (handle != nullptr) {
            CloseHandle(handle);
        }
    }
    return status;
}

Win32CrashRelease::~Win32CrashRelease()
{
    if (m_helper != nullptr) {
        SetEvent(m_over);
        WaitForSingleObject(m_helper, helperPatience);
        CloseHandle(m_helper);
    }
    if (m_over != nullptr) {
        CloseHandle(m_over);
    }
}

int Win32CrashRelease::watch(const std::wstring &commandLine)
{
    const wchar_t *text = std::wcschr(commandLine.c_str(), L' ');
    if (text == nullptr) {
        return 2;
    }
    const HANDLE program = handleFrom(text);
    const HANDLE over = handleFrom(text);
    const HANDLE page = handleFrom(text);
    const auto *held =
        static_cast<const Win32HeldInput *>(MapViewOfFile(page, FILE_MAP_READ, 0, 0, sizeof(Win32HeldInput)));
    if (held == nullptr) {
        return 2;
    }
    const std::array<HANDLE, 2> ends{program, over};
    const bool hasEnded = WaitForMultipleObjects(2, ends.data(), FALSE, INFINITE) != WAIT_FAILED;
    if (hasEnded) {
        release(*held);
    }
    // cppcheck-suppress memleak // the process ends with this, and gives back all that it has of the system
    return hasEnded ? 0 : 2;
}
