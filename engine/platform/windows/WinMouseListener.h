#pragma once

#include "engine/platform/windows/win32/Win32MouseHook.h"

#include <QObject>

#include <atomic>

/// Notices mouse movement on the whole desktop with a low-level hook.
///
/// The hook works on a thread of its own and only posts, however long the GUI thread is busy. Without the
/// hook, which the log says, nothing is ever emitted.
class WinMouseListener final : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WinMouseListener)

public:
    explicit WinMouseListener(QObject *parent = nullptr);

    bool isInstalled() const { return m_hook.isInstalled(); }

Q_SIGNALS:
    /// Emitted on the thread that made this object, from its event loop, and so after the movement; movements
    /// that came meanwhile count as one.
    void userMovedMouse();

private:
    void post();

    std::atomic<bool> m_posted{false};
    Win32MouseHook m_hook; // the last: its thread uses the others
};
