#pragma once

#include "engine/platform/Pointer.h"

/// The system's pointer. Movements made here may reach the mouse hook and count there; this is deliberate.
class WindowsPointer final : public Pointer
{
    Q_DISABLE_COPY_MOVE(WindowsPointer)

public:
    WindowsPointer() = default;

    /// While the system does not tell (the session is locked), where the pointer was last seen.
    QPoint position() const override;
    void moveTo(QPoint position) override;
    QVector<QRect> screens() const override;

private:
    mutable QPoint m_lastSeen;
};
