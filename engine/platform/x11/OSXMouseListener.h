#pragma once

#include "engine/platform/x11/X11Connection.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <QVector>

#include <memory>

/// Notices when the user moves the real mouse: the mouse listener of every platform but Windows.
///
/// It watches the X server's raw motion, which the program's own pointer movements do not make, and leaves
/// out synthesised input. Nothing polls: while the mouse rests nothing runs. A movement that goes on is
/// reported every 10 ms, since a fast mouse sends a thousand events a second; its end is reported at most
/// that late.
class OSXMouseListener : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(OSXMouseListener)

public:
    explicit OSXMouseListener(QObject *parent = nullptr);
    ~OSXMouseListener() override;

    /// True between a doWork() that succeeded and finished().
    bool isWatching() const { return m_connection != nullptr; }

Q_SIGNALS:
    /// doWork() has been called and begins.
    void workRequested();
    /// The state has changed: "watching", "not watching: " and the reason.
    void valueChanged(QString value);
    /// Nothing will be reported any more: the watching could not begin, or the server has gone away.
    void finished();
    /// The user moves the mouse.
    void userMovedMouse();

public Q_SLOTS:
    /// Begins to watch and returns at once; while it watches already, does nothing.
    void doWork();

private:
    QString open();
    void readEvents();
    void handle(void *genericEvent);
    void stop(const QString &reason);

    std::shared_ptr<X11Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_gathering;   // after a report, until the events are looked at again
    bool m_moved = false; // seen in the events that are being read
    QVector<int> m_synthesised;
    int m_opcode = 0;
};
