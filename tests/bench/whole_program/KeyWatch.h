#pragma once

#include <QByteArray>

#include <cstdint>

struct _XDisplay; // NOLINT(bugprone-reserved-identifier): Xlib names it so

/// Another program's window in front, which tells when a key arrives there.
class KeyWatch
{
    Q_DISABLE_COPY_MOVE(KeyWatch)

public:
    explicit KeyWatch(const QByteArray &display);
    ~KeyWatch();

    bool isReady() const { return m_window != 0; }

    /// Waits for the next key event of this kind and returns the monotonic time in ns at which it was read; 0
    /// when none comes within a second.
    std::int64_t waitFor(bool press);

    /// Presses the button in the corner of the program's window, which hides it; false when it is not to be
    /// found or stays. The empty program has a window of the same size, and nothing in its corner.
    bool hideProgram();

    static std::int64_t now();

private:
    _XDisplay *m_display = nullptr;
    unsigned long m_window = 0;
};
