#pragma once

#include "engine/platform/xkb/CapturedKey.h"
#include "engine/platform/xkb/KeyboardMap.h"

#include <bitset>
#include <memory>

struct xkb_keymap;

/// A keyboard layout as libxkbcommon holds it, whether it came from an X server or from a compositor. The one
/// place that reads layouts, with the library's rule for keys that have fewer groups than the keyboard.
class XkbKeymap
{
public:
    /// What the keyboard remembers; modifiers are X's eight bits.
    struct State {
        quint32 group = 0;
        quint32 modifiers = 0; ///< in force: held, latched and locked
        quint32 locked = 0;
    };
    using Keycodes = std::bitset<256>;

    /// Takes @p keymap over; null makes an object that knows no key.
    explicit XkbKeymap(xkb_keymap *keymap);

    bool isValid() const { return m_keymap != nullptr; }

    /// What has to be pressed for which symbol. Keycodes that type nothing count as spare unless they are
    /// among
    /// @p reserved.
    KeyboardMap map(const State &state, const Keycodes &reserved = {}) const;

    /// A key that the user presses. Only what the layout says is set; empty for a keycode that it does not
    /// have.
    CapturedKey key(quint32 keycode, const State &state) const;

private:
    struct Unref {
        void operator()(xkb_keymap *keymap) const;
    };
    std::unique_ptr<xkb_keymap, Unref> m_keymap;
};
