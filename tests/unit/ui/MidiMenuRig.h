#pragma once

#include "tests/unit/ui/DialogRig.h"
#include "ui/MidiMenu.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>

/// A note with a release, and an encoding of the knob.
inline shortCut someRecord()
{
    shortCut record;
    record.channel = 3;
    record.cc = 60;
    record.v_on = 100;
    record.v_off = 5;
    record.note = true;
    record.v_off_enable = true;
    record.knobcc = 20;
    record.m3fh = true;
    return record;
}

/// The dialog over its window, its controls, and what it has reported.
struct MidiMenuRig {
    MidiMenuRig()
        : dialog(window.page)
        , midi(&dialog, &MidiMenu::newMidi)
        , knob(&dialog, &MidiMenu::newMidiKnob)
    {
        // In the order of the table, which is that in which they were made.
        const QList<QLineEdit *> edits = dialog.findChildren<QLineEdit *>();
        channel = edits.value(0);
        knobCC = edits.value(1);
        number = edits.value(2);
        value = edits.value(3);
        afterValue = edits.value(4);
    }

    QCheckBox *box(const char *text) const { return withText<QCheckBox>(dialog, QLatin1String(text)); }
    QLabel *label(const char *text) const { return withText<QLabel>(dialog, QLatin1String(text)); }
    QLabel *ok() const { return withPicture(dialog, QStringLiteral("ok_0")); }

    static void type(QLineEdit *edit, const QString &text)
    {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }

    PageWindow window;
    MidiMenu dialog;
    QSignalSpy midi;
    QSignalSpy knob;
    QLineEdit *channel;
    QLineEdit *knobCC;
    QLineEdit *number;
    QLineEdit *value;
    QLineEdit *afterValue;
};
