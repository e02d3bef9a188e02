#pragma once

#include "engine/platform/PointerAppearance.h"
#include "engine/platform/x11/X11Connection.h"

/// Hides the pointer on the whole desktop through XFixes. The server shows it again by itself when the
/// program dies.
class X11PointerAppearance final : public PointerAppearance
{
    Q_DISABLE_COPY_MOVE(X11PointerAppearance)

public:
    explicit X11PointerAppearance(std::shared_ptr<X11Connection> connection);
    ~X11PointerAppearance() override { restore(); }

    void setHidden(bool hidden) override;

    /// Shows the pointer if this object hid it: nothing else can be hidden on our behalf.
    void restore() override { setHidden(false); }

private:
    std::shared_ptr<X11Connection> m_connection;
    bool m_canHide = false;
    bool m_hidden = false; // the server counts: one show too many is an error, one hide too many stays
};
