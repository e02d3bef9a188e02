#pragma once

#include "engine/platform/AutostartEntry.h"
#include "engine/platform/windows/win32/Win32RunKey.h"

/// The entry in the machine's list of programs that start at log-on. Changing it needs administrative rights;
/// without them nothing changes and the log says so.
class RunKeyEntry final : public AutostartEntry
{
    Q_DISABLE_COPY_MOVE(RunKeyEntry)

public:
    RunKeyEntry() = default;

    bool exists() const override;
    void write(const QString &program) override;
    void remove() override;

private:
    Win32RunKey m_key;
};
