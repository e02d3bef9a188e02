#include "engine/DoneAction.h"
#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "ui/SentWords.h"

#include <QTest>

using Event = DoneAction::Event;

class tst_SentWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aShortcutIsItsKeys();
    void aMessageIsWhatWasSent();
    void whatDoesNothingSaysSo();
    void aKnobSaysWhatItsStepDid();
    void theEndsOfKeysAndTouchesHaveNoWords();

private:
    static DoneAction pressed(int control, qint32 key1, qint32 key2, qint32 key3)
    {
        DoneAction done;
        done.control = control;
        done.action.key1 = key1;
        done.action.key2 = key2;
        done.action.key3 = key3;
        return done;
    }
    static QString turned(KnobMode mode, Event event)
    {
        DoneAction done;
        done.mode = mode;
        done.event = event;
        return SentWords::of(done);
    }
};

void tst_SentWords::aShortcutIsItsKeys()
{
    DoneAction done = pressed(3, 17, 16, 'S');
    done.action.label = QStringLiteral("Save all"); // what is sent counts, not what it is called
    QCOMPARE(SentWords::of(done), QString::fromUtf8("3 \u00b7 Ctrl + Shift + S"));
    QCOMPARE(SentWords::of(pressed(9, SPECIAL_ACTION, 9, 0)), QString::fromUtf8("9 \u00b7 Shift 1"));
}

void tst_SentWords::aMessageIsWhatWasSent()
{
    DoneAction done = pressed(7, MIDI_BUTTON_ACTION, 11, 0);
    done.midi = {true, true, {0x90, 60, 127}};
    QCOMPARE(SentWords::of(done), QString::fromUtf8("7 \u00b7 note 60 on, channel 1"));
    done.event = Event::Release;
    done.midi.message = {0x81, 60, 0};
    QCOMPARE(SentWords::of(done), QString::fromUtf8("7 \u00b7 note 60 off, channel 2"));
    done.midi = {true, false, {0xBF, 12, 5}};
    QCOMPARE(SentWords::of(done), QString::fromUtf8("7 \u00b7 controller 12: 5, channel 16 (not sent)"));
}

void tst_SentWords::whatDoesNothingSaysSo()
{
    QCOMPARE(SentWords::of(pressed(5, -1, -1, -1)), QString::fromUtf8("5 \u00b7 does nothing"));
    QCOMPARE(SentWords::of(pressed(5, SPECIAL_ACTION, 0, 0)), QString::fromUtf8("5 \u00b7 does nothing"));
    QCOMPARE(SentWords::of(pressed(5, MIDI_BUTTON_ACTION, 11, 0)),
             QString::fromUtf8("5 \u00b7 does nothing")); // no controller: there was nothing to send
    DoneAction done = pressed(5, 0, 0, 0);
    done.layer = Layer::Shift1;
    QCOMPARE(SentWords::of(done), QString::fromUtf8("5 \u00b7 does nothing in Shift 1"));
}

void tst_SentWords::aKnobSaysWhatItsStepDid()
{
    QCOMPARE(turned(KnobMode::UpDownKeys, Event::TurnLeft), QString::fromUtf8("knob \u00b7 Up"));
    QCOMPARE(turned(KnobMode::LeftRightKeys, Event::TurnLeft), QString::fromUtf8("knob \u00b7 Right"));
    QCOMPARE(turned(KnobMode::Circular, Event::TurnRight), QString::fromUtf8("knob \u00b7 pointer up"));
    QCOMPARE(turned(KnobMode::Horizontal, Event::TurnLeft),
             QString::fromUtf8("knob \u00b7 pointer to the left"));
}

void tst_SentWords::theEndsOfKeysAndTouchesHaveNoWords()
{
    DoneAction done = pressed(3, 17, 16, 'S');
    done.event = Event::Release;
    QVERIFY(SentWords::of(done).isEmpty());
    QVERIFY(turned(KnobMode::Circular, Event::LetGo).isEmpty());
    QVERIFY(turned(KnobMode::UpDownKeys, Event::Touch).isEmpty());
    QVERIFY(turned(KnobMode::LeftRightKeys, Event::Touch).isEmpty());
    QVERIFY(turned(KnobMode::Midi, Event::Touch).isEmpty()); // no message is due
    QVERIFY(!SentWords::has(done));
    QVERIFY(!turned(KnobMode::Circular, Event::Touch).isEmpty());
}

QTEST_MAIN(tst_SentWords)
#include "tst_SentWords.moc"
