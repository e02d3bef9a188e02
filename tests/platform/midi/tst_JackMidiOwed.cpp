#include "tests/platform/midi/MidiProbe.h"
#include "tests/support/main/Main.h"

namespace
{

/// One that nobody has waited for yet has gone, too.
bool isGone(const QByteArray &process)
{
    const QByteArray status = fileText(QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(process)));
    return status.isEmpty() || status.mid(status.lastIndexOf(')') + 2).startsWith('Z');
}

// The release process may try for half a minute.
constexpr int releasePatience = 40000;

} // namespace

/// What a program owes that was killed, or ended beside a server that stood still.
class tst_JackMidiOwed : public QObject, private MidiDesk
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

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

private:
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
};

QTEST_GUILESS_MAIN(tst_JackMidiOwed)
#include "tst_JackMidiOwed.moc"
