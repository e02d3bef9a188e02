#include "engine/platform/x11/X11Desktop.h"

#include "engine/platform/x11/X11Layout.h"

#include <X11/Xlib.h>

int X11Desktop::virtualKeyFromNative(quint32 nativeVirtualKey, quint32 nativeScanCode) const
{
    CapturedKey key;
    KeyboardMap map;
    QString problem;
    const std::shared_ptr<X11Connection> connection = X11Connection::open(problem);
    if (connection && nativeScanCode != 0) {
        // The keyboard that was used last is the one whose key this is.
        const X11Layout layout = X11Layout::read(*connection, X11Layout::coreKeyboard());
        key = layout.keymap.key(nativeScanCode, layout.state);
        map = layout.keymap.map(layout.state, layout.modifierKeys);
    }
    // The toolkit may not know of NumLock: it forgets what is locked when a symbol is put on a key.
    key.pressed = key.pressed != 0 ? key.pressed : nativeVirtualKey;
    return key.virtualKey(map);
}

bool X11Desktop::isComposited() const
{
    QString problem;
    const std::shared_ptr<X11Connection> connection = X11Connection::open(problem);
    if (!connection) {
        return true;
    }
    Display *display = connection->display();
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
    return XGetSelectionOwner(display, XInternAtom(display, name.constData(), False)) != None;
}
