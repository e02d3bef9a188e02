#include "tests/support/jack/JackServer.h"
#include "tests/support/jack/MidiListener.h"
#include "tests/support/main/Main.h"

#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

namespace
{

QByteArray fileText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

/// One that nobody has waited for yet has gone, too.
bool isGone(const QByteArray &process)
{
    const QByteArray status = fileText(QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(process)));
    return status.isEmpty() || status.mid(status.lastIndexOf(')') + 2).startsWith('Z');
}

/// The program under test; see midi_probe.cpp for its commands.
class Probe
{
public:
    explicit Probe(QProcessEnvironment environment)
    {
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("veltrix.midi.debug=true"));
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(MIDI_PROBE), QStringList());
    }
    ~Probe()
    {
        if (m_process.state() != QProcess::NotRunning && end() < 0) {
            m_process.kill();
            m_process.waitForFinished(5000);
        }
    }

    void tell(const QString &command) { m_process.write(command.toLatin1() + '\n'); }

    /// The answer, or an empty text when none came in @p timeoutMs. Log lines before it go to log.
    QString ask(const QString &command, int timeoutMs = 15000)
    {
        tell(command);
        QElapsedTimer timer;
        timer.start();
        for (;;) {
            while (!m_process.canReadLine()) {
                if (!m_process.waitForReadyRead(qMax(timeoutMs - static_cast<int>(timer.elapsed()), 0)))
                    return QString();
            }
            const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
            if (!line.startsWith(QLatin1String("log ")))
                return line;
            log.append(line.mid(4));
        }
    }

    /// The number at the end of the answer; -1 when none came.
    int askNumber(const QString &command)
    {
        const QString answer = ask(command);
        return answer.isEmpty() ? -1 : answer.section(QLatin1Char(' '), -1).toInt();
    }

    /// Ends the program as at quit and returns how long that took, -1 when it crashed or went on.
    int end()
    {
        QElapsedTimer timer;
        timer.start();
        m_process.closeWriteChannel();
        const bool good = m_process.waitForFinished(10000) &&
                          m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
        return good ? static_cast<int>(timer.elapsed()) : -1;
    }

    void killNow()
    {
        m_process.kill();
        m_process.waitForFinished(5000);
    }

    /// The process that it starts first of all.
    QByteArray releaseProcess() const
    {
        const QString list = QStringLiteral("/proc/%1/task/%1/children").arg(m_process.processId());
        return fileText(list).split(' ').value(0);
    }

    /// What came on standard error so far: not from the log.
    QString printed() { return QString::fromLocal8Bit(m_process.readAllStandardError()); }

    QStringList log;

private:
    QProcess m_process;
};

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

// Ten thousand messages are far more than the 16 KiB that RtMidi queues for a server. What they may take at
// most, in milliseconds, on a machine that is busy with other things.
constexpr int floodLimit = 500;

// A new connection carries messages from the server's next cycle on.
constexpr int afterConnecting = 100;

// Calls that wait for an answer give up after 2000 ms; rounded up for a busy machine.
constexpr int patience = 4000;

// The release process may try for half a minute.
constexpr int releasePatience = 40000;

} // namespace

#define VERIFY_BETWEEN(value, low, high)                                                                     \
    do {                                                                                                     \
        const int result = (value);                                                                          \
        QVERIFY2(result >= (low) && result <= (high), qPrintable(QString::number(result)));                  \
    } while (false)

class tst_JackMidi : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<JackServer>();
        QVERIFY2(m_server->isRunning(), qPrintable(m_server->error()));
        m_listener = std::make_unique<MidiListener>(m_server->environment());
        QVERIFY(m_listener->isReady());
        m_probe = std::make_unique<Probe>(m_server->environment());
    }

    void cleanup()
    {
        if (QTest::currentTestFailed())
            qWarning().noquote() << "log of the program:" << m_probe->log.join(QLatin1String(" | "));
        m_server->resume();
        m_probe.reset();
        m_listener.reset();
        m_server.reset();
    }

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

    void aKilledProgramsNotesAreEnded()
    {
        m_probe->ask(text("create"));
        QCOMPARE(m_probe->ask(text("choose")), text("chose tester:FROM host"));
        QTest::qWait(afterConnecting);
        m_probe->ask(text("note 60"));
        m_probe->ask(text("note 61"));
        QCOMPARE(m_listener->waitForLines(2), QStringList({text("midi 90 3C 64"), text("midi 90 3D 64")}));
        m_probe->killNow();
        QCOMPARE(m_listener->waitForLines(4, 15000).mid(2),
                 QStringList({text("midi 80 3C 00"), text("midi 80 3D 00")}));
    }

    // First the one that counts the cycles, then the one that plays.
    void aKilledProgramsNotesAreEndedThoughItsServerRefusesAClient_data()
    {
        QTest::addColumn<int>("activation");
        for (const int activation : {1, 2}) {
            QTest::addRow("%d", activation) << activation;
        }
    }

    void aKilledProgramsNotesAreEndedThoughItsServerRefusesAClient()
    {
        QFETCH(int, activation);
        m_probe->ask(text("create"));
        QCOMPARE(m_probe->ask(text("choose")), text("chose tester:FROM host"));
        QTest::qWait(afterConnecting);
        m_probe->ask(text("note 60"));
        QCOMPARE(m_listener->waitForLines(1), QStringList(text("midi 90 3C 64")));
        QCOMPARE(m_probe->ask(text("refuse %1").arg(activation)), text("refused"));
        m_probe->killNow();
        const QStringList endings = m_listener->waitForLines(2, 45000).mid(1);
        QVERIFY2(endings == QStringList(text("midi 80 3C 00")), qPrintable(endings.join(QLatin1Char(','))));
    }

    void aKilledProgramsNotesAreEndedThoughItsServerThrowsAClientOut()
    {
        m_probe->ask(text("create"));
        QCOMPARE(m_probe->ask(text("choose")), text("chose tester:FROM host"));
        QTest::qWait(afterConnecting);
        m_probe->ask(text("note 60"));
        QCOMPARE(m_listener->waitForLines(1), QStringList(text("midi 90 3C 64")));
        QCOMPARE(m_probe->ask(text("expel")), text("expelled"));
        m_probe->killNow();
        QCOMPARE(m_listener->waitForLines(2, releasePatience).mid(1), QStringList(text("midi 80 3C 00")));
    }

    // What ends a note is still in the program's memory when that goes.
    void anEndThatTheServerDidNotFetchIsSentAfterAKill()
    {
        const QByteArray release = beginNoteAndEndItBesideAStoppedServer();
        QVERIFY(!release.isEmpty());
        m_probe->killNow();
        m_server->resume();
        QCOMPARE(m_listener->waitForLines(2, releasePatience).mid(1), QStringList(text("midi 80 3C 00")));
        QTRY_VERIFY_WITH_TIMEOUT(isGone(release), releasePatience);
        QCOMPARE(m_listener->lines().size(), 2); // once
    }

    void anEndThatTheServerDidNotFetchIsSentAfterTheEnd()
    {
        const QByteArray release = beginNoteAndEndItBesideAStoppedServer();
        QVERIFY(!release.isEmpty());
        VERIFY_BETWEEN(m_probe->end(), 0, patience);
        m_server->resume();
        const QStringList endings = m_listener->waitForLines(2, releasePatience).mid(1);
        QVERIFY2(endings.contains(text("midi 80 3C 00")), qPrintable(endings.join(QLatin1Char(','))));
        QTRY_VERIFY_WITH_TIMEOUT(isGone(release), releasePatience);
    }

    void anEndThatTheServerFetchedIsNotSentAgain()
    {
        openPort();
        m_probe->ask(text("note 60"));
        m_probe->ask(text("off 60"));
        const QByteArray release = m_probe->releaseProcess();
        QVERIFY(!release.isEmpty() && !isGone(release));
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
        QTRY_VERIFY_WITH_TIMEOUT(isGone(release), 1000);
        QCOMPARE(m_listener->waitForLines(2), QStringList({text("midi 90 3C 64"), text("midi 80 3C 00")}));
    }

    void whatIsOwedIsNotTriedLongerThanItMayBe()
    {
        m_server->pause();
        VERIFY_BETWEEN(m_probe->askNumber(text("owed 500")), 500, patience);
        m_probe->killNow();
    }

    // What sounded went with it.
    void nothingIsOwedToAServerThatIsNoMore()
    {
        if (QFile::exists(text("/dev/snd/seq"))) {
            QSKIP("there is another MIDI system");
        }
        openPort();
        m_probe->ask(text("note 60"));
        const QByteArray release = m_probe->releaseProcess();
        QVERIFY(!release.isEmpty() && !isGone(release));
        m_server->kill();
        m_probe->killNow();
        QTRY_VERIFY_WITH_TIMEOUT(isGone(release), patience);
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
        QCOMPARE(m_probe->ask(text("input C105")), text("got 193 5"));
        VERIFY_BETWEEN(m_probe->end(), 0, 1000);
    }

private:
    void openPort()
    {
        VERIFY_BETWEEN(m_probe->askNumber(text("create")), 0, patience);
        QCOMPARE(m_probe->ask(text("choose")), text("chose tester:FROM host"));
        QTest::qWait(afterConnecting);
    }

    /// The release process, or nothing when that failed.
    QByteArray beginNoteAndEndItBesideAStoppedServer()
    {
        openPort();
        m_probe->ask(text("note 60"));
        const bool sounds = m_listener->waitForLines(1) == QStringList(text("midi 90 3C 64"));
        m_server->pause();
        const bool ended = m_probe->ask(text("off 60")) == text("ended");
        return sounds && ended ? m_probe->releaseProcess() : QByteArray();
    }

    bool hasGoneIsLogged() const { return !m_probe->log.filter(text("has gone")).isEmpty(); }

    std::unique_ptr<JackServer> m_server;
    std::unique_ptr<MidiListener> m_listener;
    std::unique_ptr<Probe> m_probe;
};

QTEST_GUILESS_MAIN(tst_JackMidi)
#include "tst_JackMidi.moc"
