#pragma once

#include <QtGlobal>

class InputInjector;
struct shortCut;

/// The arrow keys' virtual-key codes.
enum class ArrowKey : quint16 { Left = 0x25, Up = 0x26, Right = 0x27, Down = 0x28 };

/// Turns the engine's decisions into single input events. Keeps no state: a key stays down for exactly as
/// long as its button, nothing is repeated, added or checked.
class KeySynthesis
{
    Q_DISABLE_COPY_MOVE(KeySynthesis)

public:
    /// Nothing is sent for this code.
    static constexpr qint32 noKey = -1;

    /// @p injector must outlive this object.
    explicit KeySynthesis(InputInjector &injector);

    /// Sends one key event. Only the low 16 bits of @p code reach the system. Nothing is sent for noKey and
    /// for 0, which is what an entry holds that nobody has set.
    void sendKey(qint32 code, bool down);

    /// Sends the three keys of @p shortcut in their order, on the release too: they are deliberately not
    /// released in reverse.
    void sendShortcut(const shortCut &shortcut, bool down);

    /// Key down and key up, as two events.
    void tapArrow(ArrowKey key);

    void leftButton(bool down);

private:
    InputInjector &m_injector;
};
