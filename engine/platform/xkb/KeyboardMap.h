#pragma once

#include "engine/platform/xkb/KeysymTable.h"

#include <QHash>
#include <QVector>
#include <QtGlobal>

#include <array>

/// What the keys of a layout type, in the active group, with NumLock as it is: which key has to be pressed
/// for a symbol. A value; XkbKeymap makes it.
///
/// Keycodes are XKB's (the kernel's plus 8), modifiers are X's eight bits.
class KeyboardMap
{
public:
    /// How to type a symbol.
    struct Place {
        quint8 keycode = 0;   ///< 0: not on the layout
        bool direct = false;  ///< the bare key types it
        quint8 modifiers = 0; ///< else: what has to be held besides (X's modifier bits)
    };

    /// Adds what a key types on one level. Directly typed symbols win over others, then the earlier addition.
    void add(quint32 keysym, const Place &place);

    /// Notes what a key types with Shift.
    void setShifted(quint8 keycode, quint32 keysym) { m_shifted.insert(keycode, keysym); }

    /// Takes over that a spare keycode, or one that was put to use before, types this symbol from now on.
    void put(quint8 keycode, quint32 keysym);

    /// Notes a keycode that types nothing in any group.
    void addSpare(quint8 keycode) { m_spares.append(keycode); }

    /// Notes the keypad's decimal key and what it types with NumLock on: a point, a separator or a comma.
    void setKeypadDecimal(quint32 keysym) { m_keypadDecimal = keysym; }

    /// Notes the key that gives a modifier bit (0 to 7).
    void setModifierKey(int bit, quint8 keycode) { m_modifierKeys[size_t(bit)] = keycode; }

    void setNumLockMask(quint8 mask) { m_numLockMask = mask; }

    Place find(quint32 keysym) const { return m_places.value(keysym); }

    /// What the bare key types; 0 for nothing.
    quint32 symbolAt(quint8 keycode) const { return m_direct.value(keycode); }

    /// True when the bare key types the symbol.
    bool types(quint8 keycode, quint32 keysym) const { return keysym != 0 && symbolAt(keycode) == keysym; }

    /// What the key types with Shift; 0 for nothing of its own.
    quint32 shiftedAt(quint8 keycode) const { return m_shifted.value(keycode); }

    /// True when nothing is known.
    bool isEmpty() const { return m_places.isEmpty(); }

    /// The symbols that stand for a virtual-key code on this layout.
    KeysymTable::Symbols symbolsOf(quint16 virtualKey) const;

    /// How to press the key of a virtual-key code: a bare key where there is one. Keycode 0 for a code that
    /// no key of the layout types.
    Place placeOf(quint16 virtualKey) const;

    const QVector<quint8> &spares() const { return m_spares; }
    quint32 keypadDecimal() const { return m_keypadDecimal; }
    quint8 modifierKey(int bit) const { return m_modifierKeys[size_t(bit)]; }
    quint8 numLockMask() const { return m_numLockMask; }

private:
    QHash<quint32, Place> m_places;
    QHash<quint8, quint32> m_direct;
    QHash<quint8, quint32> m_shifted;
    QVector<quint8> m_spares;
    std::array<quint8, 8> m_modifierKeys{};
    quint32 m_keypadDecimal = 0;
    quint8 m_numLockMask = 0;
};
