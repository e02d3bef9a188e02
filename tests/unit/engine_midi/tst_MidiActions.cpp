#include "MidiActionsRig.h"
#include "tests/support/main/Main.h"

#include <QTest>

#include <limits>

/// Choosing the port, and what buttons and the knob send.
class tst_MidiActions : public QObject, private MidiActionsRig
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    // Choosing the port

    void theFirstPortHoldingFromIsChosen()
    {
        m_port->closePort();
        m_midi->ports = {"Midi Through:0", "loop:FROM host", "other FROM"};
        QCOMPARE(m_actions->chooseOutputPort(), QStringLiteral("loop:FROM host"));
        QCOMPARE(m_midi->opened.back(), 1U);
        QCOMPARE(
            m_log->lines(),
            QStringList({QStringLiteral("searching for MIDIOUT"), QStringLiteral("Midi Through:0"),
                         QStringLiteral("loop:FROM host"), QStringLiteral("Using MIDI loop:FROM host")}));
    }

    void fromIsCaseSensitive()
    {
        m_port->closePort();
        m_midi->ports = {"loop:from host", "loop:From host"};
        QCOMPARE(m_actions->chooseOutputPort(), QStringLiteral("Not Available"));
        QCOMPARE(m_log->lines(),
                 QStringList({QStringLiteral("searching for MIDIOUT"), QStringLiteral("loop:from host"),
                              QStringLiteral("loop:From host"), QStringLiteral("error opening MidiOut")}));
    }

    void aPortThatDoesNotOpenIsPassedOver()
    {
        m_port->closePort();
        m_midi->ports = {"1 FROM", "2 FROM"};
        m_midi->fail["openPort"] = {2, 2}; // the first call was init's
        QCOMPARE(m_actions->chooseOutputPort(), QStringLiteral("2 FROM"));
        QVERIFY(m_port->isOpen());
        QCOMPARE(m_log->lines(),
                 QStringList({QStringLiteral("searching for MIDIOUT"), QStringLiteral("1 FROM"),
                              QStringLiteral("Using MIDI 1 FROM"), QStringLiteral("openPort failed"),
                              QStringLiteral("error opening MidiOut"), QStringLiteral("2 FROM"),
                              QStringLiteral("Using MIDI 2 FROM")}));
    }

    void withoutAPortMessagesGoNowhereSilently()
    {
        m_port->closePort();
        m_midi->ports.clear();
        QCOMPARE(m_actions->chooseOutputPort(), QStringLiteral("Not Available"));
        QCOMPARE(m_log->linesHolding(QStringLiteral("error opening MidiOut")).size(), 1);
        m_log->clear();
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
        QCOMPARE(m_log->lines(), QStringList());
    }

    // Buttons

    void noteWithoutReleaseMessage()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, false, true);
        QCOMPARE(sent(), QStringList(QStringLiteral("90 3C 64")));
        m_actions->sendMidi(1, 60, 100, 0, true, false, false);
        QCOMPARE(sent(), QStringList());
    }

    void noteWithReleaseMessage()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        QCOMPARE(sent(), QStringList({QStringLiteral("90 3C 64"), QStringLiteral("80 3C 00")}));
    }

    void theReleaseVelocityIsTheOffValue()
    {
        m_actions->sendMidi(3, 61, 100, 33, true, true, false);
        QCOMPARE(sent(), QStringList(QStringLiteral("82 3D 21")));
    }

    void controllerOnChannel16()
    {
        m_actions->sendMidi(16, 7, 127, 0, false, true, true);
        m_actions->sendMidi(16, 7, 127, 0, false, true, false);
        QCOMPARE(sent(), QStringList({QStringLiteral("BF 07 7F"), QStringLiteral("BF 07 00")}));
    }

    void controllerWithoutReleaseMessage()
    {
        m_actions->sendMidi(2, 7, 127, 0, false, false, true);
        m_actions->sendMidi(2, 7, 127, 0, false, false, false);
        QCOMPARE(sent(), QStringList(QStringLiteral("B1 07 7F")));
    }

    void numberMinusOneSendsNothing()
    {
        m_actions->sendMidi(1, -1, 100, 0, true, true, true);
        m_actions->sendMidi(1, -1, 100, 0, true, true, false);
        m_actions->sendMidi(1, -1, 100, 0, false, true, true);
        QCOMPARE(sent(), QStringList());
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void onlyTheLowEightBitsCount_data()
    {
        QTest::addColumn<int>("channel");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("note");
        QTest::addColumn<QString>("expected");
        const int lowest = std::numeric_limits<int>::min();
        const int highest = std::numeric_limits<int>::max();
        QTest::newRow("channel 0, note") << 0 << 60 << 100 << true << QStringLiteral("8F 3C 64");
        QTest::newRow("channel 0, controller") << 0 << 60 << 100 << false << QStringLiteral("AF 3C 64");
        QTest::newRow("channel 17") << 17 << 60 << 100 << true << QStringLiteral("A0 3C 64");
        QTest::newRow("channel 81 wraps") << 81 << 60 << 100 << false << QStringLiteral("00 3C 64");
        QTest::newRow("channel -1") << -1 << 60 << 100 << true << QStringLiteral("8E 3C 64");
        QTest::newRow("highest channel") << highest << 60 << 100 << true << QStringLiteral("8E 3C 64");
        QTest::newRow("lowest channel") << lowest << 60 << 100 << true << QStringLiteral("8F 3C 64");
        QTest::newRow("number and value") << 1 << 300 << 511 << false << QStringLiteral("B0 2C FF");
        QTest::newRow("negative") << 1 << -2 << -1 << false << QStringLiteral("B0 FE FF");
    }

    void onlyTheLowEightBitsCount()
    {
        QFETCH(int, channel);
        QFETCH(int, number);
        QFETCH(int, value);
        QFETCH(bool, note);
        QFETCH(QString, expected);
        m_actions->sendMidi(channel, number, value, 0, note, true, true);
        QCOMPARE(sent(), QStringList(expected));
    }

    void messagesAreLoggedAsDebugLines()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        QCOMPARE(m_log->lines(), QStringList()); // off by default
        m_log.reset();
        m_log = std::make_unique<LogCapture>(QStringLiteral("veltrix.engine.debug=true"));
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        m_actions->sendMidi(16, 7, 127, 1, false, false, true);
        m_actions->sendMidi(16, 7, 127, 1, false, false, false);
        QCOMPARE(m_log->lines(), QStringList({QStringLiteral("Sendig Midi: 1 60 100 0 true false"),
                                              QStringLiteral("Midi Sent: 80 3C 00"),
                                              QStringLiteral("Sendig Midi: 16 7 127 1 false true"),
                                              QStringLiteral("Midi Sent: BF 07 7F")}));
    }

    // The knob

    void theTouchActsAsAPress()
    {
        shortCut action = knob();
        action.cc = 64;
        action.v_on = 127;
        action.v_off = 5;
        action.v_off_enable = true;
        play(action, "DU");
        QCOMPARE(sent(), QStringList({QStringLiteral("B1 40 7F"), QStringLiteral("B1 40 05")}));
        action.note = true;
        action.v_off_enable = false;
        play(action, "DU");
        QCOMPARE(sent(), QStringList(QStringLiteral("91 40 7F")));
        action.cc = -1;
        play(action, "DU");
        QCOMPARE(sent(), QStringList());
    }

    void relative7F01()
    {
        shortCut action = knob();
        action.m01h = true;
        play(action, "LR");
        QCOMPARE(sent(), QStringList({QStringLiteral("B1 14 7F"), QStringLiteral("B1 14 01")}));
    }

    void relative3F41()
    {
        shortCut action = knob();
        action.m3fh = true;
        play(action, "LR");
        QCOMPARE(sent(), QStringList({QStringLiteral("B1 14 3F"), QStringLiteral("B1 14 41")}));
    }

    void absoluteGoesTo127ButStores126()
    {
        shortCut action = knob();
        action.m0_127 = true;
        play(action, QByteArray(130, 'R'));
        QStringList expected;
        for (int value = 1; value <= 126; ++value) {
            expected.append(step(value));
        }
        for (int i = 0; i < 4; ++i) {
            expected.append(step(127));
        }
        QCOMPARE(sent(), expected);
        play(action, "L");
        QCOMPARE(sent(), QStringList(step(125)));
    }

    void absoluteStopsAtZero()
    {
        shortCut action = knob();
        action.m0_127 = true;
        play(action, "LRRLLL");
        QCOMPARE(sent(), QStringList({step(0), step(1), step(2), step(1), step(0), step(0)}));
    }

    void absoluteStartsAnewAfterAReset()
    {
        shortCut action = knob();
        action.m0_127 = true;
        play(action, "RRR");
        m_actions->resetKnobValue();
        play(action, "R");
        QCOMPARE(sent(), QStringList({step(1), step(2), step(3), step(1)}));
    }

    void withoutAnEncodingZeroIsSent()
    {
        play(knob(), "LR");
        QCOMPARE(sent(), QStringList({step(0), step(0)}));
    }

    void laterEncodingsOverrideEarlierOnes()
    {
        shortCut action = knob();
        action.m01h = true;
        action.m3fh = true;
        play(action, "LR");
        QCOMPARE(sent(), QStringList({QStringLiteral("B1 14 3F"), QStringLiteral("B1 14 41")}));
        action.m0_127 = true;
        play(action, "R");
        QCOMPARE(sent(), QStringList(step(1)));
    }

    void stepsAreNeverSuppressedByTheReleaseFlag()
    {
        shortCut action = knob();
        action.m3fh = true;
        action.note = true; // steps are control changes all the same
        action.v_off_enable = false;
        play(action, "L");
        QCOMPARE(sent(), QStringList(QStringLiteral("B1 14 3F")));
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void knobNumberMinusOneSendsNothing()
    {
        shortCut action = knob();
        action.m3fh = true;
        action.knobcc = -1;
        play(action, "LR");
        QCOMPARE(sent(), QStringList());
    }

    void otherKnobEventsDoNothing()
    {
        play(knob(), "XSdulr ");
        QCOMPARE(sent(), QStringList());
    }

private:
    static QString step(int value)
    {
        return QStringLiteral("B1 14 %1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
    }
};

QTEST_GUILESS_MAIN(tst_MidiActions)
#include "tst_MidiActions.moc"
