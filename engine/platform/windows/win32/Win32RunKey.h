#pragma once

#include "engine/platform/windows/win32/Win32Registry.h"

#include <string>

/// The value "Veltrix" in the machine's list of programs that start when a user logs on.
///
/// Reading is free to everybody; writing and removing need administrative rights.
class Win32RunKey
{
public:
    Win32RunKey();

    bool exists() const { return m_value.exists(); }

    /// Registers @p program, an executable's path with either separator. Returns ERROR_SUCCESS or the
    /// system's error number.
    LSTATUS write(const std::wstring &program) const;

    /// Removes the value; that there is none is a success too.
    LSTATUS remove() const { return m_value.remove(); }

    /// The command as it is registered: with "\" as separator, and quoted, so that blanks in the path do not
    /// end it.
    static std::wstring commandFor(std::wstring program);

private:
    Win32RegistryText m_value;
};
