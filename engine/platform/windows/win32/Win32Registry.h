#pragma once

#include <optional>
#include <string>
#include <windows.h>

/// One named text below one registry key, in the program's own view of the registry.
class Win32RegistryText
{
public:
    /// @p root is a predefined key such as HKEY_CURRENT_USER.
    Win32RegistryText(HKEY root, std::wstring key, std::wstring name);

    /// True when a value of this name exists, of whatever type.
    bool exists() const;

    /// The text as it is stored, variables unexpanded. Empty when there is none or it is no text.
    std::optional<std::wstring> read() const;

    /// Creates or replaces the value and has the registry written to disk. @p type is REG_SZ or
    /// REG_EXPAND_SZ. Returns ERROR_SUCCESS or the system's error number.
    LSTATUS write(const std::wstring &text, DWORD type) const;

    /// Removes the value; that there is none is a success too.
    LSTATUS remove() const;

private:
    HKEY m_root;
    std::wstring m_key;
    std::wstring m_name;
};
