#pragma once

#include "engine/platform/Pointer.h"
#include "engine/platform/x11/X11Connection.h"

/// The pointer and the monitors of the X server. Moving the pointer makes no raw motion, so that the
/// program's own movements are never taken for the user's.
class X11Pointer final : public Pointer
{
    Q_DISABLE_COPY_MOVE(X11Pointer)

public:
    explicit X11Pointer(std::shared_ptr<X11Connection> connection);

    QPoint position() const override;
    void moveTo(QPoint position) override;

    /// The monitors that RANDR names, else those of Xinerama, else the whole screen; asked anew each time.
    QVector<QRect> screens() const override;

private:
    QVector<QRect> randrMonitors() const;
    QVector<QRect> xineramaScreens() const;

    std::shared_ptr<X11Connection> m_connection;
    bool m_hasMonitors = false; // RANDR 1.5 or later
};
