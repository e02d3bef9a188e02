#pragma once

#include <QByteArray>
#include <QPoint>

#include <cstdint>

struct _XDisplay; // NOLINT(bugprone-reserved-identifier): Xlib names it so

/// Somebody who looks at the screen and tells when a window of the program's size comes and what it shows.
/// Times are monotonic, in ns.
class ScreenWatch
{
    Q_DISABLE_COPY_MOVE(ScreenWatch)

public:
    explicit ScreenWatch(const QByteArray &display);
    ~ScreenWatch();

    bool isReady() const { return m_display != nullptr; }

    /// Waits until the X server shows such a window; returns when it was told, 0 when none comes.
    std::int64_t waitForWindow(int timeoutMs);

    /// Forgets what windows came before.
    void forget();

    /// The last such window's row of pixels at @p y.
    QByteArray row(int y) const;

    static std::int64_t now();

private:
    _XDisplay *m_display = nullptr;
    unsigned long m_window = 0;
};
