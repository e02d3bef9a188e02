#include "tests/platform/midi/MidiProbe.h"
#include "tests/support/main/Main.h"

namespace
{

// Ten thousand messages are far more than the 16 KiB that RtMidi queues for a server. What they may take at
// most, in milliseconds, on a machine that is busy with other things.
constexpr int floodLimit = 500;

} // namespace

class tst_JackMidi : public QObject, private MidiDesk
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void theBytesArriveAsTheyWereSent()
    {
        openPort();
        m_probe->ask(text("send 903C64"));
        m_probe->ask(text("send 803C00"));
        m_probe->ask(text("send BF077F"));
        m_probe->ask(text("send C105"));
        QCOMPARE(m_listener->waitForLines(4), QStringList({text("midi 90 3C 64"), text("midi 80 3C 00"),
                                                           text("midi BF 07 7F"), text("midi C1 05")}));
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

    void theLastMessageBeforeTheEndArrives()
    {
        openPort();
        m_probe->ask(text("send 803C00"));
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
        QCOMPARE(m_listener->waitForLines(1), QStringList(text("midi 80 3C 00")));
    }

    void theLastMessageBeforeTheEndArrivesThoughACallbackIsUnderWay()
    {
        openPort();
        QCOMPARE(m_probe->ask(text("linger 120")), text("lingers"));
        QTest::qWait(200);
        m_probe->ask(text("send 803C00"));
        VERIFY_BETWEEN(m_probe->end(), 0, patience);
        QCOMPARE(m_listener->waitForLines(1), QStringList(text("midi 80 3C 00")));
    }

    void theFirstPortHoldingFromIsChosen()
    {
        m_listener.reset();
        MidiListener none(m_server->environment(), text("to host"), text("one"));
        MidiListener first(m_server->environment(), text("FROM host"), text("two"));
        MidiListener second(m_server->environment(), text("FROM host"), text("three"));
        QVERIFY(none.isReady() && first.isReady() && second.isReady());
        m_probe->ask(text("create"));
        QCOMPARE(m_probe->ask(text("choose")), text("chose two:FROM host"));
        QVERIFY(m_probe->log.contains(text("one:to host")));
        QTest::qWait(afterConnecting);
        m_probe->ask(text("send 903C64"));
        QCOMPARE(first.waitForLines(1), QStringList(text("midi 90 3C 64")));
        QCOMPARE(none.lines() + second.lines(), QStringList());
    }

    void othersSeeThePortUnderTheProgramsName()
    {
        openPort();
        QCOMPARE(m_probe->ask(text("outputs")), text("outputs Veltrix:RtMidi"));
    }

    void theChoiceOfTheSystemIsLogged()
    {
        openPort();
        QCOMPARE(m_probe->log.filter(text("MIDI output goes through")).size(), 1);
        QVERIFY(m_probe->log.filter(text("MIDI output goes through")).first().endsWith(text("Jack")));
    }

    void aLongStreamLosesNothing()
    {
        openPort();
        // Several times what the queue holds.
        for (int count = 100; count <= 10000; count += 100) {
            QVERIFY(m_probe->ask(text("flood 100")).startsWith(text("flooded")));
            QCOMPARE(m_listener->waitForLines(count).size(), count);
        }
        QCOMPARE(m_probe->log.filter(text("keep up")).size(), 0);
    }

    void aKilledServerHoldsNothingUp()
    {
        openPort();
        m_server->kill();
        VERIFY_BETWEEN(m_probe->askNumber(text("flood 10000")), 0, floodLimit);
        VERIFY_BETWEEN(m_probe->askNumber(text("flood 10000")), 0, floodLimit);
        QTRY_VERIFY(m_probe->ask(text("send 803C00")) == text("sent") && hasGoneIsLogged());
        m_probe->ask(text("flood 10000"));
        QCOMPARE(m_probe->log.filter(text("has gone")).size(), 1);
        VERIFY_BETWEEN(m_probe->end(), 0, patience);
    }

    void aServerKilledWhileMessagesAreSentHoldsNothingUp()
    {
        openPort();
        m_probe->tell(text("flood 200000"));
        m_server->kill();
        QVERIFY(m_probe->ask(text("threads")).startsWith(text("flooded")));
        VERIFY_BETWEEN(m_probe->end(), 0, patience);
    }

    void aKilledServerIsNoticedSoon()
    {
        openPort();
        m_server->kill();
        QTest::qWait(200);
        QCOMPARE(m_probe->ask(text("send 903C64")), text("sent"));
        QCOMPARE(m_probe->log.filter(text("has gone")).size(), 1);
        VERIFY_BETWEEN(m_probe->askNumber(text("delete")), 0, patience);
        VERIFY_BETWEEN(m_probe->askNumber(text("threads")), 1, 1);
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

    void aServerThatEndsInOrderIsNoticedToo()
    {
        openPort();
        m_server->stop();
        QTRY_VERIFY(m_probe->ask(text("send 903C64")) == text("sent") && hasGoneIsLogged());
        VERIFY_BETWEEN(m_probe->end(), 0, patience);
    }

    void aStoppedServerHoldsNothingUpAndGoesOn()
    {
        openPort();
        m_server->pause();
        VERIFY_BETWEEN(m_probe->askNumber(text("flood 10000")), 0, floodLimit);
        VERIFY_BETWEEN(m_probe->askNumber(text("flood 10000")), 0, floodLimit);
        QCOMPARE(m_probe->log.filter(text("keep up")).size(), 1);
        m_server->resume();
        // What fitted into the queue comes late, and sending works again.
        QVERIFY(m_listener->waitForLines(1000).size() >= 1000);
        QTRY_VERIFY(m_probe->ask(text("send BF077F")) == text("sent") &&
                    m_listener->lines().contains(text("midi BF 07 7F")));
        QCOMPARE(m_probe->log.filter(text("keep up")).size(), 1);
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

    void theProgramEndsBesideAStoppedServer()
    {
        openPort();
        m_server->pause();
        m_probe->ask(text("flood 10000"));
        VERIFY_BETWEEN(m_probe->end(), 0, patience);
    }

    void closingBesideAStoppedServerIsGivenUp()
    {
        openPort();
        m_server->pause();
        VERIFY_BETWEEN(m_probe->askNumber(text("close")), 0, patience);
        QCOMPARE(m_probe->ask(text("send 903C64")), text("sent"));
        QCOMPARE(m_probe->log.filter(text("does not answer")).size(), 1);
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

    void openingBesideAStoppedServerIsGivenUp()
    {
        QVERIFY(m_probe->ask(text("create")).startsWith(text("created")));
        m_server->pause();
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(m_probe->ask(text("choose")), text("chose Not Available"));
        VERIFY_BETWEEN(static_cast<int>(timer.elapsed()), 0, patience);
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

    void startingBesideAStoppedServerIsGivenUp()
    {
        m_server->pause();
        VERIFY_BETWEEN(m_probe->askNumber(text("create")), 0, patience);
        QCOMPARE(m_probe->ask(text("choose")), text("chose Not Available"));
        m_server->resume();
        // The thread that was given up comes to an end, and its client with it.
        QTRY_COMPARE(m_probe->askNumber(text("threads")), 1);
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

    void withoutAServerThereAreNoPortsAndNoThreads()
    {
        Probe probe(JackServer::environmentWithoutServer());
        VERIFY_BETWEEN(probe.askNumber(text("create")), 0, patience);
        VERIFY_BETWEEN(probe.askNumber(text("threads")), 1, 1);
        QCOMPARE(probe.ask(text("choose")), text("chose Not Available"));
        QCOMPARE(probe.ask(text("send 903C64")), text("sent"));
        QCOMPARE(probe.log.filter(text("MIDI output")).size(), 1);
        VERIFY_BETWEEN(probe.end(), 0, 1000);
        QCOMPARE(probe.printed(), QString()); // the libraries like to print lines of their own
    }

    void nothingIsLeftOfAPort()
    {
        openPort();
        QVERIFY(m_probe->askNumber(text("threads")) > 1);
        VERIFY_BETWEEN(m_probe->askNumber(text("delete")), 0, 1000);
        VERIFY_BETWEEN(m_probe->askNumber(text("threads")), 1, 1);
        openPort();
        m_probe->ask(text("send 903C64"));
        QCOMPARE(m_listener->waitForLines(1), QStringList(text("midi 90 3C 64")));
    }

    // On an overloaded machine JACK's thread can be held up anywhere within its callback.
    void aPortMayGoWhileItsCallbackRuns()
    {
        for (int round = 0; round < 3; ++round) {
            openPort();
            m_probe->ask(text("flood 100"));
            QCOMPARE(m_probe->ask(text("late 120")), text("late"));
            QTest::qWait(150);
            const int took = m_probe->askNumber(text("delete"));
            QVERIFY2(took >= 0, qPrintable(m_probe->printed()));
            VERIFY_BETWEEN(took, 0, patience);
            QCOMPARE(m_probe->ask(text("late 0")), text("late"));
            VERIFY_BETWEEN(m_probe->askNumber(text("threads")), 1, 1);
        }
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

    void theProgramMayEndWhileACallbackRuns()
    {
        openPort();
        m_probe->ask(text("late 120"));
        QTest::qWait(150);
        const int took = m_probe->end();
        QVERIFY2(took >= 0, qPrintable(m_probe->printed()));
        VERIFY_BETWEEN(took, 0, patience);
    }

    void theServerMayDieWhileACallbackRuns()
    {
        openPort();
        m_probe->ask(text("late 120"));
        QTest::qWait(150);
        m_server->kill();
        const int took = m_probe->end();
        QVERIFY2(took >= 0, qPrintable(m_probe->printed()));
        VERIFY_BETWEEN(took, 0, patience);
    }

    void anInputPortSaysWhatArrives()
    {
        QCOMPARE(m_probe->ask(text("input 903C64")), text("got 144 60 100"));
        const QStringList inputs = m_probe->log.filter(text("inputs "));
        QCOMPARE(inputs.size(), 1);
        QVERIFY2(inputs.first().contains(text("RtMidi Input Client:RtMidi")), qPrintable(inputs.first()));
        QCOMPARE(m_probe->ask(text("input C105")), text("got 193 5"));
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

private:
    bool hasGoneIsLogged() const { return !m_probe->log.filter(text("has gone")).isEmpty(); }
};

QTEST_GUILESS_MAIN(tst_JackMidi)
#include "tst_JackMidi.moc"
