#pragma once

#include "engine/platform/FocusedProgram.h"
#include "engine/platform/windows/win32/Win32ForegroundWatch.h"

#include <memory>

/// The program of the foreground window. Its name is the executable file's.
class WindowsFocusedProgram final : public FocusedProgram
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WindowsFocusedProgram)

public:
    WindowsFocusedProgram() = default;

    bool isTold() const override { return true; }
    void setWatched(bool watched) override;

private:
    void tellOf(const std::wstring &executable);

    std::unique_ptr<Win32ForegroundWatch> m_watch;
};
