#pragma once

#include <QString>

#include <optional>

/// Where a virtual device listens on this computer: "tcp:127.0.0.1:PORT".
///
/// Whoever sends there presses keys here, so no other computer is ever asked.
struct TcpAddress {
    quint16 port = 0;

    /// True for every text that means a connection and no serial port, also for a wrong one.
    static bool isMeant(const QString &text);

    /// Nothing for another host and for a port outside 1 to 65535.
    static std::optional<TcpAddress> parse(const QString &text);

    QString toString() const;
};
