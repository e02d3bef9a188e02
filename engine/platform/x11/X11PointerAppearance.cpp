#include "engine/platform/x11/X11PointerAppearance.h"

#include "engine/platform/PlatformLog.h"

#include <X11/extensions/Xfixes.h>

X11PointerAppearance::X11PointerAppearance(std::shared_ptr<X11Connection> connection)
    : m_connection(std::move(connection))
{
    int event = 0;
    int error = 0;
    int major = 4;
    int minor = 0;
    Display *display = m_connection->display();
    m_canHide = XFixesQueryExtension(display, &event, &error) &&
                XFixesQueryVersion(display, &major, &minor) && major >= 4;
    if (!m_canHide) {
        qCWarning(lcPlatform, "the pointer stays visible: the X server has no XFixes 4");
    }
}

void X11PointerAppearance::setHidden(bool hidden)
{
    if (!m_canHide || hidden == m_hidden) {
        return;
    }
    m_hidden = hidden;
    if (hidden) {
        XFixesHideCursor(m_connection->display(), m_connection->root());
    } else {
        XFixesShowCursor(m_connection->display(), m_connection->root());
    }
    m_connection->flush();
}
