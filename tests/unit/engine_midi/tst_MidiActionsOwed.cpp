#include "MidiActionsRig.h"
#include "tests/support/main/Main.h"

#include <QTest>

/// What is owed: the ends of notes and controllers, when they are sent, and when the port takes them.
class tst_MidiActionsOwed : public QObject, private MidiActionsRig
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    // Notes that are owed their end

    void anUnendedNoteIsEndedWithItsOffValue()
    {
        m_actions->sendMidi(5, 60, 100, 9, true, true, true);
        m_actions->sendMidi(6, 62, 100, 8, true, true, true);
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList({QStringLiteral("84 3C 09"), QStringLiteral("85 3E 08")}));
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void anEndedNoteIsOwedNothing()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void aNoteThatIsRepeatedWithoutEndIsOwedNoMoreThanAllControlsCouldHaveBegun()
    {
        for (int press = 0; press < 1000; ++press) {
            m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        }
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent().size(), 11);
    }

    void notesMeantToRingOnAreNotTouched()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, false, true);
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void controllersArePutBackOnce()
    {
        m_actions->sendMidi(1, 64, 127, 0, false, true, true);
        m_actions->sendMidi(1, 64, 100, 3, false, true, true);
        m_actions->sendMidi(1, 65, 127, 0, false, true, true);
        m_actions->sendMidi(1, 65, 127, 0, false, true, false);
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList(QStringLiteral("B0 40 03")));
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void controllersMeantToStayAreNotTouched()
    {
        m_actions->sendMidi(1, 64, 127, 0, false, false, true);
        shortCut knob;
        knob.channel = 1;
        knob.knobcc = 20;
        knob.m0_127 = true;
        knob.v_off_enable = true;
        m_actions->knobEvent(knob, 'R');
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void aControllerThatIsHeldIsPutBackAfterACrash()
    {
        m_actions->sendMidi(1, 64, 127, 5, false, true, true);
        QVERIFY(m_afterCrash->contains({0xB0, 64, 5}));
        m_actions->sendMidi(1, 64, 127, 5, false, true, false);
        QVERIFY(m_afterCrash->isEmpty());
    }

    void aNoteBegunTwiceIsEndedTwiceByAServerThatStoodStill()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_midi->hasRoom = false;
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        sent();
        m_midi->hasRoom = true;
        m_clock.advance(MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList({QStringLiteral("80 3C 00"), QStringLiteral("80 3C 00")}));
    }

    void theSameNoteBegunTwiceIsOwedTwoEnds()
    {
        m_actions->sendMidi(1, 60, 100, 1, true, true, true);
        m_actions->sendMidi(1, 60, 100, 2, true, true, true);
        m_actions->sendMidi(1, 60, 100, 2, true, true, false);
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList(QStringLiteral("80 3C 01")));
    }

    void anEndFromAnotherActionCounts()
    {
        m_actions->sendMidi(1, 60, 100, 1, true, true, true);
        m_actions->sendMidi(1, 60, 90, 7, true, true, false);
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList());
    }

    void theEndOfAnotherNoteDoesNotCount()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_actions->sendMidi(2, 60, 100, 0, true, true, false);
        m_actions->sendMidi(1, 61, 100, 0, true, true, false);
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList(QStringLiteral("80 3C 00")));
    }

    void aTouchThatIsNeverLetGoIsEnded()
    {
        shortCut action = knob();
        action.cc = 48;
        action.v_on = 90;
        action.note = true;
        play(action, "D");
        sent();
        m_actions->releaseHeld();
        QCOMPARE(sent(), QStringList(QStringLiteral("81 30 00")));
    }

    // What the port does not accept

    void aNoteOffThatTheFullPortRefusesIsOwedUntilItIsAccepted()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        sent();
        m_midi->hasRoom = false;
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        m_clock.advance(10 * MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList());
        QVERIFY(!m_afterCrash->isEmpty());
        m_midi->hasRoom = true;
        m_clock.advance(MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList(QStringLiteral("80 3C 00")));
        QVERIFY(m_afterCrash->isEmpty());
        m_clock.advance(10 * MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList());
        QCOMPARE(m_clock.pendingCount(), std::size_t(0));
    }

    void aNoteOffThatFailsIsOwedAndLoggedOnce()
    {
        m_midi->fail["sendMessage"] = {1, 4};
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        m_clock.advance(3 * MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList());
        m_clock.advance(MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList(QStringLiteral("80 3C 00")));
        QCOMPARE(m_log->linesHolding(QStringLiteral("sendMessage failed")).size(), 1);
    }

    void aControllerIsPutBackTooWhenThereIsRoom()
    {
        m_midi->hasRoom = false;
        m_actions->sendMidi(1, 64, 127, 5, false, true, true);
        m_actions->sendMidi(1, 64, 127, 5, false, true, false);
        m_midi->hasRoom = true;
        m_clock.advance(MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList(QStringLiteral("B0 40 05")));
    }

    void ofAControllerThatIsOwedOnlyTheLastValueIsSent()
    {
        m_midi->hasRoom = false;
        m_actions->sendMidi(1, 64, 127, 5, false, true, false);
        m_actions->sendMidi(1, 65, 127, 5, false, true, false);
        m_actions->sendMidi(1, 64, 127, 6, false, true, false);
        m_midi->hasRoom = true;
        m_clock.advance(MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList({QStringLiteral("B0 40 06"), QStringLiteral("B0 41 05")}));
    }

    void anOverdueNoteOffGoesBeforeTheNextNoteOn()
    {
        m_midi->hasRoom = false;
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        m_midi->hasRoom = true;
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        QCOMPARE(sent(), QStringList({QStringLiteral("80 3C 00"), QStringLiteral("90 3C 64")}));
        m_clock.advance(MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList());
    }

    void theNotesOfALossStayOwedToAFullPort()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_actions->sendMidi(1, 61, 100, 0, true, true, true);
        sent();
        m_midi->hasRoom = false;
        m_actions->releaseHeld();
        m_midi->hasRoom = true;
        m_clock.advance(MidiActions::retryInterval);
        QCOMPARE(sent(), QStringList({QStringLiteral("80 3C 00"), QStringLiteral("80 3D 00")}));
    }

    void anEndThatThePortKeepsIsOwedAfterACrashUntilItHasLeft()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_midi->allSent = false;
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        m_actions->sendMidi(1, 7, 100, 5, false, true, true);
        m_actions->sendMidi(1, 7, 100, 5, false, true, false);
        sent();
        m_clock.advance(10 * MidiActions::retryInterval);
        QVERIFY(m_afterCrash->contains({0x80, 60, 0}));
        QVERIFY(m_afterCrash->contains({0xB0, 7, 5}));
        m_midi->allSent = true;
        m_clock.advance(MidiActions::retryInterval);
        QVERIFY(m_afterCrash->isEmpty());
        QCOMPARE(m_clock.pendingCount(), std::size_t(0));
        QCOMPARE(sent(), QStringList()); // the program itself sends it once
    }

    void anOverdueEndThatThePortKeepsIsOwedAfterACrash()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_midi->hasRoom = false;
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        m_midi->hasRoom = true;
        m_midi->allSent = false;
        m_clock.advance(MidiActions::retryInterval);
        QVERIFY(sent().contains(QStringLiteral("80 3C 00")));
        QVERIFY(m_afterCrash->contains({0x80, 60, 0}));
        m_midi->allSent = true;
        m_clock.advance(MidiActions::retryInterval);
        QVERIFY(m_afterCrash->isEmpty());
    }

    void whatIsBegunAnewMakesTheEndBeforeItVoid()
    {
        m_midi->allSent = false;
        for (const bool note : {true, false}) {
            m_actions->sendMidi(1, 60, 100, 0, note, true, true);
            m_actions->sendMidi(1, 60, 100, 0, note, true, false);
            m_actions->sendMidi(1, 61, 100, 0, note, true, true);
            m_actions->sendMidi(1, 61, 100, 0, note, true, false);
            m_actions->sendMidi(1, 60, 100, 0, note, false, true); // meant to stay
        }
        QVERIFY(!m_afterCrash->contains({0x80, 60, 0}));
        QVERIFY(m_afterCrash->contains({0x80, 61, 0}));
        QVERIFY(!m_afterCrash->contains({0xB0, 60, 0}));
        QVERIFY(m_afterCrash->contains({0xB0, 61, 0}));
        m_midi->allSent = true;
        m_clock.advance(MidiActions::retryInterval);
        QVERIFY(m_afterCrash->isEmpty());
    }

    void whatAClosedPortSentIsOwedNoMore_data()
    {
        QTest::addColumn<bool>("fails");
        QTest::newRow("closed") << false;
        QTest::newRow("not closed in time") << true;
    }

    void whatAClosedPortSentIsOwedNoMore()
    {
        QFETCH(bool, fails);
        m_midi->allSent = false;
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        if (fails) {
            m_midi->fail["closePort"] = {1, 1};
        }
        m_actions->closePort();
        QCOMPARE(m_afterCrash->isEmpty(), !fails);
        m_clock.advance(10 * MidiActions::retryInterval);
        QCOMPARE(m_afterCrash->isEmpty(), !fails);
        QCOMPARE(m_clock.pendingCount(), std::size_t(0));
    }

    void aPortThatHasGoneForGoodIsNotAskedAgain()
    {
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        m_midi->alive = false;
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        QCOMPARE(m_clock.pendingCount(), std::size_t(0));
        QVERIFY(!m_afterCrash->isEmpty());
    }

    void whatSoundsIsOwedAfterACrash()
    {
        QVERIFY(m_afterCrash->isEmpty());
        m_actions->sendMidi(1, 60, 100, 0, true, true, true);
        QVERIFY(!m_afterCrash->isEmpty());
        m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        QVERIFY(m_afterCrash->isEmpty());
        m_actions->sendMidi(1, 60, 100, 0, true, false, true); // meant to ring on
        QVERIFY(m_afterCrash->isEmpty());
    }

    void theLedgerFiltersNothing()
    {
        for (int i = 0; i < 3; ++i) {
            m_actions->sendMidi(1, 60, 100, 0, true, true, false);
        }
        QCOMPARE(sent().size(), 3);
    }
};

QTEST_GUILESS_MAIN(tst_MidiActionsOwed)
#include "tst_MidiActionsOwed.moc"
