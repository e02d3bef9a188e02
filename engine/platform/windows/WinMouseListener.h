#pragma once

#include "engine/platform/windows/win32/Win32MouseHook.h"

#include <QObject>

/// Notices mouse movement on the whole desktop with a low-level hook.
///
/// The thread that makes it must run an event loop. Without the hook, which the log says, nothing is ever
/// emitted.
class WinMouseListener final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WinMouseListener)

public:
    explicit WinMouseListener(QObject *parent = nullptr);

    bool isInstalled() const { return m_hook.isInstalled(); }

Q_SIGNALS:
    /// Emitted for every movement from inside the hook, before the pointer moves and while the system waits.
    /// Connect with Qt::QueuedConnection whatever is not done at once.
    void userMovedMouse();

private:
    Win32MouseHook m_hook;
};
