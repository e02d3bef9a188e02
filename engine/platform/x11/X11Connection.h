#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <memory>

struct _XDisplay; // NOLINT(bugprone-reserved-identifier): Xlib names it so

/// One connection to the X server, of our own: the toolkit's is left alone, so that its event loop and error
/// handling cannot get between a press and its release. Requests of one connection are carried out in order.
///
/// A request that the server refuses is logged; a connection that breaks is logged once and is dead from then
/// on. Neither ends the program. Used on the GUI thread.
class X11Connection
{
    Q_DISABLE_COPY_MOVE(X11Connection)

public:
    /// Connects to the display that the environment names. Null when that fails; @p problem then says why.
    static std::shared_ptr<X11Connection> open(QString &problem);
    ~X11Connection();

    /// Never null. Calls on a lost connection are harmless and do nothing.
    _XDisplay *display() const { return m_display; }
    QByteArray name() const;
    unsigned long root() const;

    /// True once the server has gone away.
    bool isLost() const { return m_lost; }

    void flush() const;

private:
    explicit X11Connection(_XDisplay *display);

    _XDisplay *m_display;
    bool m_lost = false;
};
