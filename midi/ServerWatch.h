#pragma once

#include <QtGlobal>

#include <optional>
#include <set>
#include <string>

/// What is known about a MIDI server: most of it without asking, and so without waiting for it.
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

    /// The names of all ports that something comes out of. May wait for the server.
    virtual std::set<std::string> sources() const = 0;

    /// The names of the ports that the server connects to the port called @p name; nothing when there is no
    /// such port. May wait for the server.
    virtual std::optional<std::set<std::string>> sourcesOf(const std::string &name) const = 0;
};
