#pragma once

#include "engine/platform/windows/win32/Win32QuitWatch.h"

#include <QObject>

/// Hands the system's requests to end over to the thread that made it.
class WindowsQuitGuard final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WindowsQuitGuard)

public:
    explicit WindowsQuitGuard(std::function<void()> quit);

private:
    std::function<void()> m_quit;
    Win32QuitWatch m_watch;
};
