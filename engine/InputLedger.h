#pragma once

#include "engine/platform/InputInjector.h"
#include "engine/platform/PointerAppearance.h"

#include <QVector>

/// Stands between the engine and the system and knows what the system holds on the engine's behalf: keys, the
/// left button, the hidden pointer.
///
/// Everything that comes in is passed on at once, as it came: nothing is filtered, not even a key-up for a
/// key that is not down. Letting go of what the engine's own events would leave held is a separate act, of
/// whoever knows that the user's hands are off the device. Used on the GUI thread.
class InputLedger final : public InputInjector, public PointerAppearance
{
    Q_DISABLE_COPY_MOVE(InputLedger)

public:
    /// Both must outlive this object.
    InputLedger(InputInjector &injector, PointerAppearance &appearance);

    void sendKey(quint16 virtualKey, bool down) override;
    void sendLeftButton(bool down) override;
    void prepareKeys(const QVector<quint16> &virtualKeys) override;
    void setHidden(bool hidden) override;
    void restore() override;

    /// Lets the left button up and shows the pointer, each only if it is held or hidden.
    void endDrag();

    /// Releases whatever is held: the keys in the order in which they went down, then the drag.
    void releaseAll();

    bool holdsAnything() const { return !m_keys.isEmpty() || m_leftButton || m_hidden; }
    const QVector<quint16> &heldKeys() const { return m_keys; }

private:
    InputInjector &m_injector;
    PointerAppearance &m_appearance;
    QVector<quint16> m_keys; // each once, oldest first
    bool m_leftButton = false;
    bool m_hidden = false;
};
