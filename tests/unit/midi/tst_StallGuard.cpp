#include "midi/StallGuard.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/midi/FakeMidiBackend.h"

#include <QElapsedTimer>
#include <QTest>

#include <atomic>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>

using namespace std::chrono_literals;

namespace
{

/// A server: calls that need it wait while it stands still.
struct Server {
    std::mutex mutex;
    std::condition_variable moved;
    bool still = false;
    std::atomic<bool> gone{false};
    std::atomic<quint32> cycles{0};
    std::atomic<bool> closed{false};
    std::atomic<bool> cyclesBeforeClosing{false}; ///< one at each look at their count
    std::atomic<bool> cyclesAfterClosing{true};   ///< the same
    std::atomic<int> backends{0};
    std::atomic<int> watches{0};
    std::thread::id lastCaller;
    bool refuses = false;          ///< to connect what is opened, and says nothing
    std::set<std::string> sources; ///< of its port "b"
    std::set<std::string> allSources;

    void answer()
    {
        std::unique_lock lock(mutex);
        moved.wait(lock, [this] { return !still; });
        lastCaller = std::this_thread::get_id();
    }
    void stall(bool on)
    {
        const std::lock_guard lock(mutex);
        still = on;
        moved.notify_all();
    }
};

class Watch final : public ServerWatch
{
public:
    explicit Watch(Server &server)
        : m_server(server)
    {
        ++m_server.watches;
    }
    ~Watch() override { --m_server.watches; }
    bool isGone() const override { return m_server.gone; }
    quint32 cycles() const override
    {
        const bool cycles = m_server.closed ? m_server.cyclesAfterClosing : m_server.cyclesBeforeClosing;
        return cycles ? ++m_server.cycles : m_server.cycles.load();
    }
    std::set<std::string> sources() const override
    {
        m_server.answer();
        return m_server.allSources;
    }
    std::optional<std::set<std::string>> sourcesOf(const std::string &name) const override
    {
        m_server.answer();
        return name == "b" ? std::make_optional(m_server.sources) : std::nullopt;
    }

private:
    Server &m_server;
};

class Backend final : public MidiBackend
{
public:
    Backend(Server &server, std::shared_ptr<FakeMidi> midi)
        : m_server(server)
        , m_fake(std::move(midi))
    {
        m_server.answer();
        ++m_server.backends;
    }
    ~Backend() override
    {
        m_server.answer();
        if (m_server.watches == 0) {
            qFatal("the watch went before the backend");
        }
        --m_server.backends;
    }
    unsigned int portCount() override { return m_fake.portCount(); }
    std::string portName(unsigned int index) override { return m_fake.portName(index); }
    void openPort(unsigned int index, const std::string &name) override
    {
        m_server.answer();
        m_fake.openPort(index, name);
        if (!m_server.refuses) {
            m_server.sources.insert("Veltrix-01:" + name);
        }
    }
    void closePort() override
    {
        m_server.answer();
        m_fake.closePort();
        m_server.closed = true;
    }
    void sendMessage(const std::vector<unsigned char> &message) override { m_fake.sendMessage(message); }
    void setCallback(Callback callback) override { m_fake.setCallback(std::move(callback)); }

private:
    Server &m_server;
    FakeMidiBackend m_fake;
};

} // namespace

class tst_StallGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<Server>();
        m_midi = std::make_shared<FakeMidi>();
        m_midi->ports = {"a", "b"};
        m_log = std::make_unique<LogCapture>();
    }

    void cleanup() { m_log.reset(); }

    void passesCallsOn()
    {
        const auto guard = create();
        QVERIFY(guard != nullptr);
        QCOMPARE(guard->portCount(), 2U);
        QCOMPARE(guard->portName(1), std::string("b"));
        guard->openPort(1, "RtMidi");
        QCOMPARE(m_midi->openedAs, std::string("RtMidi"));
        QVERIFY(guard->isAlive());
        QVERIFY(guard->hasRoomFor(3));
        guard->sendMessage({1, 2, 3});
        QCOMPARE(m_midi->sent, (std::vector<std::vector<unsigned char>>{{1, 2, 3}}));
        m_server->cyclesBeforeClosing = true;
        guard->closePort();
        QCOMPARE(m_midi->calls["closePort"], 1);
        QCOMPARE(m_log->lines(), QStringList());
    }

    void errorsArriveAtTheCaller()
    {
        m_midi->fail["openPort"] = {1, 1};
        const auto guard = create();
        QVERIFY_EXCEPTION_THROWN(guard->openPort(0, "RtMidi"), std::runtime_error);
        QVERIFY(guard->isAlive());
        QVERIFY_EXCEPTION_THROWN(
            StallGuard::create([]() -> StallGuard::Guarded { throw std::runtime_error("no"); }),
            std::runtime_error);
    }

    void withoutAServerThereIsNoGuard()
    {
        QVERIFY(StallGuard::create([] { return StallGuard::Guarded{}; }) == nullptr);
        QCOMPARE(m_log->lines(), QStringList());
    }

    void aServerThatStandsStillAtTheStartIsGivenUp()
    {
        m_server->stall(true);
        const QElapsedTimer timer = started();
        QVERIFY(create() == nullptr);
        QVERIFY(timer.elapsed() < 5000);
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("the MIDI server does not answer")));

        // When it goes on after all, what was made meanwhile is not left behind.
        m_server->stall(false);
        QTRY_COMPARE(m_server->watches.load(), 0);
        QCOMPARE(m_server->backends.load(), 0);
    }

    void aServerThatStandsStillWhileOpeningCountsAsGone()
    {
        auto guard = create();
        m_server->stall(true);
        // Read below; the analyser does not see past the exceptions.
        const QElapsedTimer timer = started(); // NOLINT(clang-analyzer-deadcode.DeadStores)
        QVERIFY_EXCEPTION_THROWN(guard->openPort(0, "RtMidi"), std::runtime_error);
        QVERIFY(!guard->isAlive());
        QVERIFY(!guard->hasRoomFor(1));
        QVERIFY_EXCEPTION_THROWN(guard->portCount(), std::runtime_error);
        guard.reset();
        QVERIFY(timer.elapsed() < 5000);
        QCOMPARE(m_server->backends.load(), 1); // still held by the call under way
        m_server->stall(false);
        QTRY_COMPARE(m_server->watches.load(), 0);
        QCOMPARE(m_server->backends.load(), 0);
    }

    void aServerThatStandsStillWhileClosingIsLeftBehind()
    {
        auto guard = create();
        guard->openPort(0, "RtMidi");
        m_server->stall(true);
        const QElapsedTimer timer = started();
        guard.reset();
        QVERIFY(timer.elapsed() < 5000);
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral(
                                     "the MIDI server does not answer; its connection is left behind")));
        m_server->stall(false);
        QTRY_COMPARE(m_server->watches.load(), 0);
    }

    void closingWaitsForAServerThatAnswers()
    {
        auto guard = create(20s);
        guard.reset();
        QCOMPARE(m_server->backends.load(), 0);
        QCOMPARE(m_server->watches.load(), 0);
    }

    // The library's thread may be anywhere within a cycle when the port is closed, and uses what is freed
    // then.
    void theBackendStaysUntilTheCycleOfItsClosingIsOver()
    {
        m_server->cyclesAfterClosing = false;
        auto guard = create();
        guard->openPort(0, "RtMidi");
        guard.reset(); // gives up
        QTRY_VERIFY(m_server->closed);
        ++m_server->cycles; // perhaps the one that was under way
        QTest::qWait(100);
        QCOMPARE(m_server->backends.load(), 1);
        m_server->cyclesAfterClosing = true;
        QTRY_COMPARE(m_server->watches.load(), 0);
        QCOMPARE(m_server->backends.load(), 0);
    }

    void theBackendOfAServerThatHasGoneIsNotKept()
    {
        m_server->cyclesAfterClosing = false;
        auto guard = create(20s);
        m_server->gone = true;
        guard.reset();
        QCOMPARE(m_server->backends.load(), 0);
        QCOMPARE(m_log->lines(), QStringList());
    }

    void roomLastsOnlyAsLongAsTheServerCycles()
    {
        const auto guard = create();
        int taken = 0;
        while (guard->hasRoomFor(3) && taken < 100000) {
            guard->sendMessage({1, 2, 3});
            ++taken;
        }
        // 16 KiB, of which each message takes seven bytes.
        QVERIFY2(taken > 1000 && taken * 7 < 16384, qPrintable(QString::number(taken)));
        m_server->cycles += 3;
        QVERIFY(!guard->hasRoomFor(3));
        m_server->cycles += 3;
        QVERIFY(guard->hasRoomFor(3));
        m_server->cyclesBeforeClosing = true;
    }

    void whatWasSentIsFetchedBeforeThePortIsClosed()
    {
        auto guard = create();
        guard->openPort(0, "RtMidi");
        guard->sendMessage({1, 2, 3});
        guard.reset();         // gives up
        m_server->cycles += 2; // the port's turn in the first of them may have been over
        QTest::qWait(100);
        QVERIFY(!m_server->closed);
        ++m_server->cycles;
        QTRY_VERIFY(m_server->closed);
        QTRY_COMPARE(m_server->watches.load(), 0);
    }

    void aConnectionThatIsRefusedIsNoticed()
    {
        m_server->sources = {"Veltrix:RtMidi"}; // of a program that has just died
        m_server->allSources = m_server->sources;
        m_server->refuses = true;
        const auto refused = create();
        refused->openPort(1, "RtMidi");
        QVERIFY(!refused->isConnected());
        m_server->sources.clear(); // it has been noticed
        QVERIFY(!refused->isConnected());

        m_server->refuses = false;
        const auto connected = create();
        connected->openPort(1, "RtMidi");
        QVERIFY(connected->isConnected());

        // A port that is gone is still named, until another one has its name.
        m_server->sources = {"Veltrix-01:RtMidi"};
        m_server->allSources.clear();
        const auto again = create();
        again->openPort(1, "RtMidi");
        QVERIFY(again->isConnected());

        // What has gone waits for nothing.
        m_server->refuses = true;
        const auto gone = create();
        gone->openPort(0, "RtMidi");
        QVERIFY(gone->isConnected());
    }

    void whatOthersConnectMeanwhileIsNotOurs()
    {
        m_server->refuses = true;
        const auto guard = create();
        guard->openPort(1, "RtMidi 17");
        m_server->sources = {"Veltrix-02:RtMidi", "keys:out", "keys:RtMidi 170"};
        QVERIFY(!guard->isConnected());
        m_server->sources.insert("Veltrix-01:RtMidi 17");
        QVERIFY(guard->isConnected());
    }

    void aConnectionIsTakenUpInAWholeCycle()
    {
        m_server->cycles = 100;
        const auto guard = create();
        QVERIFY(guard->isAllSent());
        guard->openPort(1, "RtMidi");
        m_server->cycles += 2; // one that was under way, and one that may be over for some only
        QVERIFY(!guard->isAllSent());
        ++m_server->cycles;
        QVERIFY(guard->isAllSent());
    }

    void aMessageIsFetchedInAWholeCycle()
    {
        m_server->cycles = std::numeric_limits<quint32>::max(); // the count wraps around
        const auto guard = create();
        QVERIFY(guard->hasRoomFor(3));
        guard->sendMessage({1, 2, 3});
        m_server->cycles += 2;
        QVERIFY(!guard->isAllSent());
        ++m_server->cycles;
        QVERIFY(guard->isAllSent());
    }

    void aServerThatHasGoneIsNoticed()
    {
        const auto guard = create();
        m_server->gone = true;
        QVERIFY(!guard->isAlive());
        QVERIFY(!guard->hasRoomFor(3));
    }

    void onlySendingStaysOnTheCallersThread()
    {
        const auto guard = create();
        guard->openPort(0, "RtMidi");
        QVERIFY(m_server->lastCaller != std::this_thread::get_id());
    }

private:
    std::unique_ptr<StallGuard> create(std::chrono::milliseconds limit = 200ms)
    {
        return StallGuard::create(
            [server = m_server.get(), midi = m_midi] {
                StallGuard::Guarded guarded;
                guarded.watch = std::make_unique<Watch>(*server);
                guarded.backend = std::make_unique<Backend>(*server, midi);
                return guarded;
            },
            limit);
    }

    static QElapsedTimer started()
    {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }

    std::unique_ptr<Server> m_server;
    std::shared_ptr<FakeMidi> m_midi;
    std::unique_ptr<LogCapture> m_log;
};

QTEST_GUILESS_MAIN(tst_StallGuard)
#include "tst_StallGuard.moc"
