#pragma once

#include "mapping/Layer.h"
#include "mapping/ShortCut.h"
#include "ui/ComboMenuBar.h"
#include "ui/ComboMenuSettings.h"

#include <QMap>

class BoxOutline;
class ComboMenuLabel;
class MidiMenu;
class ShortcutKey;

/// Shows what one of the ten controls does in the three layers, and says what the user chooses for it.
///
/// Stores in the user's settings what it is given to show and what is chosen. Keeping and carrying out the
/// mapping is the business of others.
class ComboMenu : public ComboMenuBar
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ComboMenu)

public:
    /// Reads the control's assignments back from @p settings, which must outlive the menu. @p id is the
    /// control, 0 to 9. Without a @p deviceLink, choices are shown but neither kept nor stored. @p parent is
    /// the page: the dialogs lie over it, and it owns them.
    ComboMenu(int id, QObject *deviceLink, QWidget *parent, Settings &settings);
    ~ComboMenu() override;

    int id() const { return m_id; }

    /// What is shown for @p layer, all fourteen fields.
    const shortCut &assignment(Layer layer) const { return m_assignments[layer]; }

    /// The same in plain words, for tool tips; one line.
    QString inWords(Layer layer) const;

    /// What the labels say whole, a line for each layer whose label is cut or abbreviated: "Button 3, Shift
    /// 1: Ctrl + Alt + PrtScn".
    QStringList cutLabels() const;

    /// Whether what is chosen or set from now on is stored in the user's settings. At first it is.
    void setStoring(bool storing) { m_storing = storing; }

    /// Shows and stores @p action. Sends nothing: it is not the user who chose it.
    void setAssignment(Layer layer, const shortCut &action);

    /// The text of @p layer stands out, of none for Normal: it is what acts when no layer is held.
    void setHeldLayer(Layer layer);

    /// An outline shows that the control is pressed.
    void setPressed(bool pressed);

Q_SIGNALS:
    /// A shortcut that the user captured has been stored. No other change sends this, on purpose.
    void onActionChanged();

    /// The control is to do something else, in one layer or in more at once. All that comes from the MIDI
    /// dialog while it is shown has one number @p edit of this control's, all else has 0.
    void assignmentChanged(const QMap<Layer, shortCut> &layers, int edit = 0);

public Q_SLOTS:
    void dislayMenu() override;

    /// Sets layer @p type (its Layers::number()) from a whole record, stores and shows it. Does nothing for a
    /// layer that does not exist, as do the next three.
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
    MidiMenu &openedMidiMenu(const QString &subject);
    void choose(Layer layer, const QString &text);
    void chooseSpecialAction(Layer layer, const QString &text);
    void showLabel(Layer layer, const QString &label);
    shortCut recordOf(int type) const;
    void assign(int type, const shortCut &record, int edit);
    void followShift(const QString &text);
    void refresh();

    PerLayer<QMenu *> m_layerMenus; // the menu's
    ComboMenuLabel *m_title;
    ComboMenuLabel *m_layers;
    BoxOutline *m_outline = nullptr;
    ShortcutKey *m_shortcutKey = nullptr; // the page's, as is the next
    MidiMenu *m_midiMenu = nullptr;
    QObject *const m_deviceLink; // only whether there is one
    const int m_id;
    int m_midiEdit = 0;               // how often the dialog has been opened
    PerLayer<shortCut> m_assignments; // what is shown, for the marks and the dialogs
    PerLayer<QString> m_shownLabels;
    ComboMenuSettings m_settings;
    bool m_storing = true;
};
