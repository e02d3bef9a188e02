#include "Check.h"

#include <cstdio>
#include <exception>
#include <vector>
#include <windows.h>

namespace
{

struct Entry {
    const char *name;
    void (*function)();
};

std::vector<Entry> &entries()
{
    static std::vector<Entry> list;
    return list;
}

} // namespace

namespace Check
{

Registration::Registration(const char *name, void (*function)())
{
    entries().push_back({name, function});
}

int runAll()
{
    int failures = 0;
    for (const Entry &entry : entries()) {
        try {
            entry.function();
            std::printf("PASS   : %s\n", entry.name);
        } catch (const std::exception &failure) {
            ++failures;
            std::printf("FAIL!  : %s\n    %s\n", entry.name, failure.what());
        }
        std::fflush(stdout);
    }
    std::printf("%d of %d tests failed\n", failures, static_cast<int>(entries().size()));
    return failures;
}

std::string narrow(const std::wstring &text)
{
    const int size = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(
                          WideCharToMultiByte(CP_UTF8, 0, text.c_str(), size, nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
    return bytes;
}

std::wstring programFolder()
{
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    path.resize(path.find_last_of(L'\\') + 1);
    return path;
}

} // namespace Check
