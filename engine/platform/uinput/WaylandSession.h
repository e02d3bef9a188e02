#pragma once

#include <QByteArray>
#include <QObject>
#include <QRect>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <QVector>

#include <memory>

/// What a Wayland compositor tells a client without a window: the keymap and where the outputs are.
///
/// Nothing waits for the compositor and nothing polls: news come through the event loop. When it goes away,
/// what was known stays, and the session is looked for again until it is back. Used on the GUI thread.
class WaylandSession : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(WaylandSession)

public:
    struct Connection; ///< everything that the Wayland library knows

    WaylandSession();
    ~WaylandSession() override;

    /// Connects to the display that the environment names.
    /// @return false when there is none; it is looked for from then on
    bool open();

    bool isConnected() const { return m_connection != nullptr; }

    /// Places and sizes of the outputs on the desktop, in the order in which the compositor names them. Empty
    /// until all are known.
    QVector<QRect> screens() const;

Q_SIGNALS:
    /// The keymap is known, or another.
    void keymapChanged(const QByteArray &text);

private:
    void read();
    void lose();

    std::unique_ptr<Connection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_retry;
    QVector<QRect> m_lastScreens;
};
