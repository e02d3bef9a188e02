#pragma once

#include "mapping/ShortCut.h"
#include "ui/ComboMenuBar.h"
#include "ui/ComboMenuSettings.h"

#include <array>

class ComboMenuLabel;
class MidiMenu;
class ShortcutKey;

/// What one of the ten controls does in the three layers, and the menu that changes it.
///
/// Layers are 0 Normal, 1 Shift 1, 2 Shift 2. Every assignment is stored in the user's settings as it is
/// made; writing the mapping itself is the page's business.
class ComboMenu : public ComboMenuBar
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ComboMenu)

public:
    static constexpr int layerCount = 3;

    /// Reads the control's assignments back from @p settings, which must outlive the menu. @p id is the
    /// control, 0 to 9. Without a
    /// @p deviceLink, choices are shown but neither kept nor stored. @p parent is the page: the dialogs lie
    /// over it, and it owns them.
    ComboMenu(int id, QObject *deviceLink, QWidget *parent, Settings &settings);
    ~ComboMenu() override;

    int id() const { return m_id; }

    /// What the control does in @p layer, all fourteen fields. The entry of a layer that does not exist is
    /// an unset one.
    shortCut assignment(int layer) const;

    /// The same in plain words, for tool tips; one line.
    QString inWords(int layer) const;

Q_SIGNALS:
    /// A shortcut that the user captured has been stored. No other change sends this, on purpose.
    void onActionChanged();

    /// The assignment of a layer was set, in whatever way: by the user or from a mapping.
    void assignmentChanged(int layer, const shortCut &assignment);

public Q_SLOTS:
    void dislayMenu() override;

    /// Sets layer @p type from a whole record, stores and shows it.
    void getShorcut(int type, const shortCut &shortcut);

    void loadShorcut(int type, int key1, int key2, int key3, const QString &shortcut);
    void loadMidi(int type, int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable);
    void loadMidiKnob(int type, int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable, int knobcc,
                      bool m01h, bool m3fh, bool m0_127);

protected:
    void carryOut(const QAction &chosen) override;

private:
    void buildLabels();
    void buildMenu();
    ShortcutKey &shortcutKey();
    MidiMenu &midiMenu();
    void choose(int layer, const QString &text);
    void setSpecialAction(int layer, const QString &text);
    void showLabel(int layer, const QString &label);
    void followShift(const QString &text);
    void refresh();

    std::array<QMenu *, layerCount> m_layerMenus{}; // the menu's
    ComboMenuLabel *m_title;
    ComboMenuLabel *m_layers;
    ShortcutKey *m_shortcutKey = nullptr; // the page's, as is the next
    MidiMenu *m_midiMenu = nullptr;
    QObject *const m_deviceLink; // only whether there is one
    const int m_id;
    std::array<shortCut, layerCount> m_assignments;
    std::array<QString, layerCount> m_shownLabels;
    ComboMenuSettings m_settings;
};
