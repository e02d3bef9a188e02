#pragma once

#include "mapping/ShortCut.h"
#include "ui/OverlayDialog.h"

#include <array>

class ClickableLabel;
class NumberField;
class QCheckBox;

/// The dialog in which the user sets the MIDI message of one control in one layer: a button's (show()), or
/// the knob's, which has a controller of its own while it is turned (showKnob()).
///
/// Every valid edit is reported at once. A field that is out of its range, or no number, is shown red, and as
/// long as there is one nothing is reported; what is hidden keeps the value of the record handed in.
///
/// A record without any MIDI value is shown with a channel, controllers, values and an encoding that work; a
/// touch of the knob then sends nothing until one of its boxes is checked, and nothing again without both.
class MidiMenu : public OverlayDialog
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MidiMenu)

public:
    explicit MidiMenu(QWidget *parent);

Q_SIGNALS:
    /// A button's message: @p cc is the number of the controller, or of the note when @p note is set.
    void newMidi(int type, int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable);
    /// The same for the knob, with the controller that it sends when it is turned, and its encoding.
    void newMidiKnob(int type, int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable, int knobcc,
                     bool m01h, bool m3fh, bool m0_127);

public Q_SLOTS:
    /// Shows the dialog for a button's message in layer @p type (0 Normal, 1 Shift 1, 2 Shift 2). @p id is
    /// the control's number as the caller counts, for the log only.
    void show(int type, int id, const shortCut &buttonShortCut);
    void showKnob(int type, int id, const shortCut &buttonShortCut);

protected:
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private Q_SLOTS:
    void processSettings();
    void bn_ok_slot();
    void bn_cancel_slot();
    void checkCC_slot(bool checked);
    void checkNote_slot(bool checked);
    void checkMode7Fh_01h_slot(bool checked);
    void checkMode3fh_41h_slot(bool checked);
    void checkMode0_127_slot(bool checked);

private:
    enum FieldIndex : std::size_t { Channel, KnobCC, TouchNumber, TouchValue, AfterTouchValue, FieldCount };

    void addLabels();
    void addCheckBoxes();
    void addFields();
    void connectAll();
    QCheckBox *addCheckBox(const QString &text, const QRect &place, const QString &style, int pointSize,
                           const QString &toolTip);
    void open(bool knob, int type, int id, const shortCut &record);
    void layOut();
    void fill(const shortCut &record);
    void keepOneMode(QCheckBox *checked);
    void setTouchSends(bool on, int usualNumber);

    QLabel *m_title = nullptr;
    QLabel *m_knobLabel = nullptr;
    QLabel *m_touchLabel = nullptr;
    std::array<NumberField *, FieldCount> m_fields{};
    QCheckBox *m_ccOnTouch = nullptr;
    QCheckBox *m_noteOnTouch = nullptr;
    QCheckBox *m_afterTouch = nullptr;
    QCheckBox *m_mode7Fh01h = nullptr;
    QCheckBox *m_mode3Fh41h = nullptr;
    QCheckBox *m_modeAbsolute = nullptr;
    ClickableLabel *m_ok = nullptr;
    int m_type = 0;
    int m_id = 0;
    int m_touchNumber = -1; // what a touch of the knob last sent; -1 before it sent anything
    bool m_knob = false;
};
