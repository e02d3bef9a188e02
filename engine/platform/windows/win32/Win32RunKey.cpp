#include "engine/platform/windows/win32/Win32RunKey.h"

#include <algorithm>

Win32RunKey::Win32RunKey()
    : m_value(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", L"Veltrix")
{
}

LSTATUS Win32RunKey::write(const std::wstring &program) const
{
    return m_value.write(commandFor(program), REG_SZ);
}

std::wstring Win32RunKey::commandFor(std::wstring program)
{
    std::replace(program.begin(), program.end(), L'/', L'\\');
    return L'"' + program + L'"';
}
