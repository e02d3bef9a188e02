#pragma once

#include <QString>

/// The program that keeps a serial port to itself.
struct PortHolder {
    qint64 process = 0; ///< 0: not known
    QString program;    ///< its name, as a list of processes shows it; empty: not known

    /// Looks at the port's lock, and then at what the user's own processes have open. The system tells
    /// nothing of other users' processes. Looks at so many files at most that it takes some 20 ms, however
    /// many there are.
    static PortHolder of(const QString &path);

    /// Whether that process still runs.
    bool isThere() const;
};
