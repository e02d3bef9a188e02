#pragma once

#include "engine/platform/xkb/KeyboardMap.h"
#include "engine/platform/xkb/KeysymTable.h"

#include <QVector>

#include <bitset>
#include <functional>

/// Which key has to be pressed for a virtual-key code.
///
/// The key is looked up by what it types, since a key's position says nothing: Z is elsewhere on a German
/// keyboard. A symbol that the layout types only with Shift or AltGr, or not at all, is put on a keycode that
/// nothing uses; when none of those is left, the modifiers are pressed with the key.
class KeyTranslator
{
    Q_DISABLE_COPY_MOVE(KeyTranslator)

public:
    struct Stroke {
        quint8 keycode = 0;   ///< 0: cannot be typed
        quint8 modifiers = 0; ///< X's modifier bits to be held with it
    };
    using Held = std::bitset<256>;

    /// Puts symbols on a keycode: without and with Shift.
    using Assign = std::function<void(quint8 keycode, quint32 keysym, quint32 shifted)>;

    /// @p held are the keycodes whose meaning must not change now; it must outlive this object.
    KeyTranslator(Assign assign, const Held &held);

    /// Takes over a layout that was read from the server, and puts missing symbols of the wanted codes on it
    /// again.
    void setMap(const KeyboardMap &map);

    /// Takes over which codes will be pressed from now on, and puts what the layout lacks on spare keycodes.
    void want(const QVector<quint16> &virtualKeys);

    Stroke strokeFor(quint16 virtualKey);

    quint8 modifierKey(int bit) const { return m_map.modifierKey(bit); }
    quint8 numLockMask() const { return m_map.numLockMask(); }

private:
    struct Spare {
        quint8 keycode;
        quint32 keysym;
    };

    Stroke translate(quint16 virtualKey);
    quint8 takeSpare();
    void prepareWanted();
    bool isWanted(quint32 keysym) const;

    Assign m_assign;
    const Held &m_held;
    KeyboardMap m_map;
    QVector<quint16> m_wanted;
    QVector<Spare> m_spares;        // in use, the oldest first
    QHash<quint16, Stroke> m_known; // by virtual-key code
};
