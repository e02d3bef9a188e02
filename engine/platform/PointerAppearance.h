#pragma once

#include <QtGlobal>

/// Makes the mouse pointer invisible on the whole desktop, and visible again. Used on the GUI thread.
class PointerAppearance
{
    Q_DISABLE_COPY_MOVE(PointerAppearance)

public:
    PointerAppearance() = default;
    virtual ~PointerAppearance() = default;

    virtual void setHidden(bool hidden) = 0;

    /// Puts the system's arrow back, whether or not this object hid it.
    virtual void restore() = 0;
};
