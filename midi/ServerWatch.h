#pragma once

#include <QtGlobal>

/// What can be known about a MIDI server without asking it, and so without waiting for it.
class ServerWatch
{
    Q_DISABLE_COPY_MOVE(ServerWatch)

public:
    ServerWatch() = default;
    virtual ~ServerWatch() = default;

    /// True once the server has ended, for good.
    virtual bool isGone() const = 0;

    /// Counts the server's cycles, wrapping around. In each of them every client takes its queued messages
    /// along.
    virtual quint32 cycles() const = 0;
};
