#include "engine/platform/windows/win32/Win32Registry.h"

#include <utility>

Win32RegistryText::Win32RegistryText(HKEY root, std::wstring key, std::wstring name)
    : m_root(root)
    , m_key(std::move(key))
    , m_name(std::move(name))
{
}

bool Win32RegistryText::exists() const
{
    return RegGetValueW(m_root, m_key.c_str(), m_name.c_str(), RRF_RT_ANY | RRF_NOEXPAND, nullptr, nullptr,
                        nullptr) == ERROR_SUCCESS;
}

std::optional<std::wstring> Win32RegistryText::read() const
{
    constexpr DWORD anyText = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
    std::wstring text(260, L'\0');
    for (;;) {
        auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        const LSTATUS status =
            RegGetValueW(m_root, m_key.c_str(), m_name.c_str(), anyText, nullptr, text.data(), &bytes);
        if (status == ERROR_MORE_DATA) {
            text.resize(text.size() * 2);
            continue;
        }
        if (status != ERROR_SUCCESS) {
            return std::nullopt;
        }
        text.resize(bytes / sizeof(wchar_t));
        // The terminator is counted; a value written carelessly may hold more than one.
        text.resize(text.find_last_not_of(L'\0') + 1);
        return text;
    }
}

LSTATUS Win32RegistryText::write(const std::wstring &text, DWORD type) const
{
    HKEY key = nullptr;
    LSTATUS status = RegCreateKeyExW(m_root, m_key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                     KEY_SET_VALUE, nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS) {
        return status;
    }
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    status =
        RegSetValueExW(key, m_name.c_str(), 0, type, reinterpret_cast<const BYTE *>(text.c_str()), bytes);
    if (status == ERROR_SUCCESS) {
        status = RegFlushKey(key);
    }
    RegCloseKey(key);
    return status;
}

LSTATUS Win32RegistryText::remove() const
{
    HKEY key = nullptr;
    LSTATUS status = RegOpenKeyExW(m_root, m_key.c_str(), 0, KEY_SET_VALUE, &key);
    if (status == ERROR_SUCCESS) {
        status = RegDeleteValueW(key, m_name.c_str());
        RegCloseKey(key);
    }
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}
