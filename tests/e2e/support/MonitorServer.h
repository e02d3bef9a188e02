#pragma once

#include "tests/support/xserver/XServer.h"

#include <QByteArray>
#include <QProcess>
#include <QRect>
#include <QVector>

#include <memory>

/// An X server with several monitors. Xvfb puts all its screens at one place, so this is a Xephyr inside a
/// Xvfb.
class MonitorServer
{
    Q_DISABLE_COPY_MOVE(MonitorServer)

public:
    /// @p monitors in the system's order; none of them above or left of the origin.
    explicit MonitorServer(const QVector<QRect> &monitors);
    ~MonitorServer();

    /// Empty while it runs.
    QString error() const { return m_error; }
    QByteArray display() const { return m_display; }

private:
    XServer m_outer;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_display;
    QString m_error;
};
