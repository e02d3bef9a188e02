#include "midi/OwedMessages.h"
#include "tests/support/main/Main.h"

#include <QTest>

#include <atomic>
#include <csignal>
#include <ctime>
#include <unistd.h>

namespace
{

constexpr OwedMessages::Message first{0x80, 60, 0};
constexpr OwedMessages::Message second{0x80, 61, 0};
constexpr OwedMessages::Message added{0xB0, 7, 0};

OwedMessages *watched = nullptr;
std::atomic<int> looks{0};
std::atomic<int> misses{0};

// Between two steps of the writing, as a program is that was killed there.
void look(int)
{
    ++looks;
    if (!watched->contains(first) || !watched->contains(second)) {
        ++misses;
    }
}

// Looks every 20 microseconds, always in this thread: in another one the writing would go on meanwhile.
class Looking
{
    Q_DISABLE_COPY_MOVE(Looking)

public:
    Looking()
    {
        std::signal(SIGALRM, look);
        sigevent alarm{};
        alarm.sigev_notify = SIGEV_THREAD_ID;
        alarm.sigev_signo = SIGALRM;
        alarm._sigev_un._tid = gettid();
        const itimerspec every{{0, 20000}, {0, 20000}};
        m_works = timer_create(CLOCK_MONOTONIC, &alarm, &m_timer) == 0 &&
                  timer_settime(m_timer, 0, &every, nullptr) == 0;
    }
    ~Looking()
    {
        timer_delete(m_timer);
        std::signal(SIGALRM, SIG_IGN); // one may still be on its way
    }

    bool works() const { return m_works; }

private:
    timer_t m_timer{};
    bool m_works;
};

} // namespace

class tst_OwedMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsOwedBeforeAndAfterIsNeverMissing_data();
    void whatIsOwedBeforeAndAfterIsNeverMissing();
    void moreThanFitAreNotKept();
    void portsAreKnownByWholeNames_data();
    void portsAreKnownByWholeNames();
};

void tst_OwedMessages::whatIsOwedBeforeAndAfterIsNeverMissing_data()
{
    QTest::addColumn<int>("place");
    for (const int place : {0, 1, 2}) {
        QTest::addRow("added at %d", place) << place;
    }
}

void tst_OwedMessages::whatIsOwedBeforeAndAfterIsNeverMissing()
{
    QFETCH(int, place);
    const std::vector<OwedMessages::Message> shorter{first, second};
    std::vector<OwedMessages::Message> longer = shorter;
    longer.insert(longer.begin() + place, added);
    OwedMessages owed;
    owed.set(shorter);
    watched = &owed;
    looks = 0;
    misses = 0;
    {
        const Looking looking;
        QVERIFY(looking.works());
        while (looks < 2000) {
            owed.set(longer);
            owed.set(shorter);
        }
    }
    QCOMPARE(misses.load(), 0);
    QVERIFY(!owed.contains(added));
    owed.set({});
    QVERIFY(owed.isEmpty());
}

void tst_OwedMessages::moreThanFitAreNotKept()
{
    std::vector<OwedMessages::Message> many(OwedMessages::capacity, first);
    many.push_back(second);
    OwedMessages owed;
    owed.set(many);
    QVERIFY(owed.contains(first));
    QVERIFY(!owed.contains(second));
}

void tst_OwedMessages::portsAreKnownByWholeNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("ASCII") << QStringLiteral("tester:FROM host");
    QTest::newRow("beyond ASCII") << QString::fromUtf8("FROM Gr\u00F6\u00DFe");
    QTest::newRow("longer than is kept") << QStringLiteral("FROM ") + QString(300, QLatin1Char('x'));
    QTest::newRow("cut within a character") << QStringLiteral("FRO") + QString(200, QChar(0x20AC));
}

void tst_OwedMessages::portsAreKnownByWholeNames()
{
    QFETCH(QString, name);
    OwedMessages owed;
    owed.setPort(name);
    QVERIFY(owed.isPort(name));
    QVERIFY(!owed.isPort(QStringLiteral("Midi Through:0")));
    QVERIFY(!owed.isPort(name.left(5)));
}

QTEST_GUILESS_MAIN(tst_OwedMessages)
#include "tst_OwedMessages.moc"
