#include "engine/platform/xkb/XkbKeymap.h"

#include <QVector>
#include <QtAlgorithms>

#include <X11/keysym.h>
#include <cstring>
#include <initializer_list>
#include <xkbcommon/xkbcommon.h>

namespace
{

struct StateUnref {
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};
using StatePointer = std::unique_ptr<xkb_state, StateUnref>;

constexpr quint32 realModifiers = 0xff;
constexpr quint8 shiftMask = 1;

StatePointer stateWith(xkb_keymap *keymap, quint32 modifiers, quint32 group)
{
    StatePointer state(xkb_state_new(keymap));
    xkb_state_update_mask(state.get(), 0, 0, modifiers, 0, 0, group);
    return state;
}

/// What a key types on one level; 0 for nothing, and for several symbols at once.
quint32 symbolOf(xkb_keymap *keymap, xkb_keycode_t keycode, xkb_layout_index_t group, xkb_level_index_t level)
{
    const xkb_keysym_t *symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, keycode, group, level, &symbols);
    return count == 1 ? KeysymTable::canonical(symbols[0]) : 0;
}

/// Every symbol of a key: of all its groups and levels.
QVector<quint32> symbolsOf(xkb_keymap *keymap, xkb_keycode_t keycode)
{
    QVector<quint32> symbols;
    const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(keymap, keycode);
    for (xkb_layout_index_t group = 0; group < groups; ++group) {
        const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, keycode, group);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const xkb_keysym_t *all = nullptr;
            const int count = xkb_keymap_key_get_syms_by_level(keymap, keycode, group, level, &all);
            for (int i = 0; i < count; ++i) {
                symbols.append(all[i]);
            }
        }
    }
    return symbols;
}

/// The sets of modifiers that select a level.
QVector<quint32> modifiersOf(xkb_keymap *keymap, xkb_keycode_t keycode, xkb_layout_index_t group,
                             xkb_level_index_t level)
{
    QVector<xkb_mod_mask_t> sets(64);
    const size_t count =
        xkb_keymap_key_get_mods_for_level(keymap, keycode, group, level, sets.data(), size_t(sets.size()));
    sets.resize(int(count));
    return sets;
}

/// The fewest modifiers that select a level, besides those that are @p locked.
/// @return false when no combination of others does.
bool missingFor(const QVector<quint32> &sets, quint32 locked, quint8 *missing)
{
    bool found = false;
    for (const quint32 set : sets) {
        const quint32 others = set & ~locked;
        if ((set & locked) == locked && (!found || qPopulationCount(others) < qPopulationCount(*missing))) {
            *missing = quint8(others);
            found = true;
        }
    }
    return found;
}

/// The modifiers that a key gives while it is held, or locks, where it has a symbol.
quint32 modifiersGivenBy(xkb_keymap *keymap, xkb_keycode_t keycode, quint32 group, quint32 symbol)
{
    const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, keycode, group);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
        const QVector<quint32> sets = modifiersOf(keymap, keycode, group, level);
        if (symbolOf(keymap, keycode, group, level) == symbol && !sets.isEmpty()) {
            const StatePointer state = stateWith(keymap, sets.first(), group);
            xkb_state_update_key(state.get(), keycode, XKB_KEY_DOWN);
            const auto given = xkb_state_component(XKB_STATE_MODS_DEPRESSED | XKB_STATE_MODS_LOCKED);
            return xkb_state_serialize_mods(state.get(), given) & ~sets.first() & realModifiers;
        }
    }
    return 0;
}

/// Notes which keys give which modifiers, and which of them NumLock is.
void addModifiers(xkb_keymap *keymap, quint32 group, KeyboardMap &map)
{
    for (xkb_keycode_t keycode = 255; keycode > 0; --keycode) {
        const QVector<quint32> symbols = symbolsOf(keymap, keycode);
        for (const quint32 symbol :
             std::initializer_list<quint32>{XK_Num_Lock, XK_Shift_L, XK_ISO_Level3_Shift}) {
            const quint32 given =
                symbols.contains(symbol) ? modifiersGivenBy(keymap, keycode, group, symbol) : 0;
            if (given != 0 && symbol == XK_Num_Lock) {
                map.setNumLockMask(quint8(given));
            }
            for (int bit = 0; symbol != XK_Num_Lock && bit < 8; ++bit) {
                if (given & (1U << bit)) {
                    map.setModifierKey(bit, quint8(keycode));
                }
            }
        }
    }
}

bool hasName(xkb_keymap *keymap, xkb_keycode_t keycode, const char *name)
{
    const char *own = xkb_keymap_key_get_name(keymap, keycode);
    return own && std::strcmp(own, name) == 0;
}

/// What the key in a place types on a us keyboard; places have names like AD01, the Q.
char usSymbol(xkb_keymap *keymap, xkb_keycode_t keycode)
{
    static constexpr struct {
        const char *row;
        const char *symbols;
    } rows[] = {
        {"AE", "1234567890-="}, {"AD", "qwertyuiop[]"}, {"AC", "asdfghjkl;'\\"}, {"AB", "zxcvbnm,./"}};
    static constexpr struct {
        const char *name;
        char symbol;
    } others[] = {{"TLDE", '`'}, {"BKSL", '\\'}, {"LSGT", '<'}};

    const QByteArray name(xkb_keymap_key_get_name(keymap, keycode));
    for (const auto &other : others) {
        if (name == other.name) {
            return other.symbol;
        }
    }
    for (const auto &row : rows) {
        const size_t place = name.startsWith(row.row) ? name.mid(2).toUInt() : 0;
        if (place > 0 && place <= std::strlen(row.symbols)) {
            return row.symbols[place - 1];
        }
    }
    return 0;
}

} // namespace

void XkbKeymap::Unref::operator()(xkb_keymap *keymap) const
{
    xkb_keymap_unref(keymap);
}

XkbKeymap::XkbKeymap(xkb_keymap *keymap)
    : m_keymap(keymap)
{
}

KeyboardMap XkbKeymap::map(const State &state, const Keycodes &reserved) const
{
    KeyboardMap map;
    xkb_keymap *keymap = m_keymap.get();
    if (!keymap) {
        return map;
    }
    addModifiers(keymap, state.group, map);
    const quint32 locked = state.locked & map.numLockMask();
    const StatePointer now = stateWith(keymap, locked, state.group);
    const xkb_keycode_t last = qMin<xkb_keycode_t>(255, xkb_keymap_max_keycode(keymap));
    for (xkb_keycode_t keycode = xkb_keymap_min_keycode(keymap); keycode <= last; ++keycode) {
        const QVector<quint32> all = symbolsOf(keymap, keycode);
        if (all.count(0) == all.size()) {
            if (!reserved.test(keycode)) {
                map.addSpare(quint8(keycode));
            }
            continue;
        }
        const xkb_layout_index_t group = xkb_state_key_get_layout(now.get(), keycode);
        const xkb_level_index_t direct = xkb_state_key_get_level(now.get(), keycode, group);
        const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, keycode, group);
        const quint32 heeded = xkb_state_key_get_consumed_mods2(now.get(), keycode, XKB_CONSUMED_MODE_XKB);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const quint32 keysym = symbolOf(keymap, keycode, group, level);
            quint8 missing = 0;
            if (keysym != 0 && (level == direct || missingFor(modifiersOf(keymap, keycode, group, level),
                                                              locked & heeded, &missing))) {
                map.add(keysym, {quint8(keycode), level == direct, missing});
                if (missing == shiftMask) {
                    map.setShifted(quint8(keycode), keysym);
                }
            }
            if (level == 1 && hasName(keymap, keycode, "KPDL")) {
                map.setKeypadDecimal(keysym);
            }
        }
    }
    return map;
}

CapturedKey XkbKeymap::key(quint32 keycode, const State &state) const
{
    CapturedKey key;
    xkb_keymap *keymap = m_keymap.get();
    const xkb_layout_index_t groups =
        keymap && keycode < 256 ? xkb_keymap_num_layouts_for_key(keymap, keycode) : 0;
    if (groups == 0) {
        return key;
    }
    const StatePointer now = stateWith(keymap, state.modifiers, state.group);
    const xkb_layout_index_t active = xkb_state_key_get_layout(now.get(), keycode);
    const xkb_level_index_t level = xkb_state_key_get_level(now.get(), keycode, active);
    key.pressed = symbolOf(keymap, keycode, active, level);
    key.plain = symbolOf(keymap, keycode, active, 0);
    for (xkb_layout_index_t group = 0; group < groups && key.otherGroup == 0; ++group) {
        const quint32 other = group == active ? 0 : symbolOf(keymap, keycode, group, 0);
        key.otherGroup = other <= 0xff ? other : 0; // Latin letters are of use only
    }
    key.keycode = quint8(keycode);
    key.usSymbol = usSymbol(keymap, keycode);
    key.isKeypadDecimal = hasName(keymap, keycode, "KPDL");
    return key;
}
