#pragma once

#include "tests/e2e/support/Child.h"
#include "tests/e2e/support/MonitorServer.h"
#include "tests/support/jack/JackServer.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QRect>
#include <QVector>

#include <memory>

/// What the program works on: an X server with the listener's window in front, and a MIDI server with the
/// listener's port. Everything is private to this object, which is to be used from one thread.
class Desk
{
    Q_DISABLE_COPY_MOVE(Desk)

public:
    enum class Midi { Without, With };

    /// @p screens: the monitors; empty: one of 1920 x 1080.
    explicit Desk(Midi midi, const QVector<QRect> &screens = {});

    /// Whether an X server can show these screens: none may lie above or left of the origin.
    static bool canShow(const QVector<QRect> &screens);

    /// Empty when everything runs.
    QString error() const;

    Midi midi() const { return m_midi; }
    const QVector<QRect> &screens() const { return m_screens; }
    QProcessEnvironment environment() const;
    Child &listener() { return *m_listener; }
    XTestDevices &devices() { return *m_devices; }
    QByteArray display() const { return m_monitors ? m_monitors->display() : m_server->display(); }

private:
    const Midi m_midi;
    QVector<QRect> m_screens;
    std::unique_ptr<XServer> m_server;         ///< with one screen
    std::unique_ptr<MonitorServer> m_monitors; ///< with more
    std::unique_ptr<JackServer> m_jack;
    std::unique_ptr<XTestDevices> m_devices;
    std::unique_ptr<Child> m_listener;
    QString m_error;
};
