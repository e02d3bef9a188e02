#include "midi/JackMidi.h"
#include "tests/support/jack/JackServer.h"
#include "tests/support/main/Main.h"
#include "tests/support/midi/FakeMidiBackend.h"

#include <QTest>

#include <RtMidi.h>
#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>

namespace
{

using Message = std::vector<unsigned char>;

const char *const portName = "music program:FROM host";

QString textOf(const Message &message)
{
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char *>(message.data()), static_cast<int>(message.size()))
            .toHex(' '));
}

/// A backend and the port of another program that it is to be connected to.
class Rig
{
    Q_DISABLE_COPY_MOVE(Rig)

public:
    Rig() = default;
    virtual ~Rig() = default;

    virtual MidiBackend &backend() = 0;
    /// Output: what has arrived there so far.
    virtual QStringList arrived() = 0;
    /// Input: the other program sends.
    virtual void letItSend(const Message &message) = 0;
    virtual void killTheServer() = 0;
};

/// JACK, with the music program in this process too.
class RealOutput final : public Rig
{
public:
    explicit RealOutput(JackServer &server)
        : m_server(server)
    {
        m_program.setCallback(&RealOutput::take, this);
        m_program.openVirtualPort("FROM host");
        m_backend = openJackOutput();
    }

    MidiBackend &backend() override { return *m_backend; }
    QStringList arrived() override
    {
        const std::lock_guard lock(m_mutex);
        return m_arrived;
    }
    void letItSend(const Message &) override {}
    void killTheServer() override { m_server.kill(); }

private:
    static void take(double, Message *message, void *self)
    {
        auto *rig = static_cast<RealOutput *>(self);
        const std::lock_guard lock(rig->m_mutex);
        rig->m_arrived.append(textOf(*message));
    }

    JackServer &m_server;
    std::mutex m_mutex; // messages come on the driver's thread
    QStringList m_arrived;
    RtMidiIn m_program{RtMidi::UNIX_JACK, "music program"};
    std::unique_ptr<MidiBackend> m_backend;
};

class RealInput final : public Rig
{
public:
    RealInput()
    {
        m_program.openVirtualPort("FROM host");
        m_backend = openJackInput();
    }

    MidiBackend &backend() override { return *m_backend; }
    QStringList arrived() override { return {}; }
    void letItSend(const Message &message) override { m_program.sendMessage(&message); }
    void killTheServer() override {}

private:
    RtMidiOut m_program{RtMidi::UNIX_JACK, "music program"};
    std::unique_ptr<MidiBackend> m_backend;
};

class Double final : public Rig
{
public:
    Double() { m_midi->ports = {portName}; }

    MidiBackend &backend() override { return m_backend; }
    QStringList arrived() override
    {
        QStringList lines;
        for (const Message &message : m_midi->sent) {
            lines.append(textOf(message));
        }
        return lines;
    }
    void letItSend(const Message &message) override
    {
        if (m_midi->isOpen && m_midi->callback) {
            m_midi->callback(message);
        }
    }
    void killTheServer() override { m_midi->alive = false; }

private:
    std::shared_ptr<FakeMidi> m_midi = std::make_shared<FakeMidi>();
    FakeMidiBackend m_backend{m_midi};
};

/// What happens with a backend, in words.
class Story
{
public:
    void tell(const char *what, const QVariant &how)
    {
        lines.append(QLatin1String(what) + QLatin1String(": ") + how.toString());
    }
    void attempt(const char *what, const std::function<void()> &call)
    {
        try {
            call();
            tell(what, true);
        } catch (const std::exception &) {
            tell(what, false);
        }
    }
    /// The number of the music program's port.
    unsigned int find(MidiBackend &backend)
    {
        unsigned int found = 0;
        int times = 0;
        for (unsigned int index = 0; index < backend.portCount(); ++index) {
            if (backend.portName(index) == portName) {
                found = index;
                ++times;
            }
        }
        tell("listed times", times);
        return found;
    }

    QStringList lines;
};

QStringList outputTold(Rig &rig)
{
    Story story;
    MidiBackend &backend = rig.backend();
    story.tell("alive", backend.isAlive());
    const unsigned int index = story.find(backend);
    for (int round = 0; round < 2; ++round) {
        story.attempt("opens", [&] { backend.openPort(index, "RtMidi"); });
        QTest::qWait(100); // a new connection carries messages from the server's next cycle on
        story.tell("has room", QTest::qWaitFor([&] { return backend.hasRoomFor(6); }));
        story.attempt("sends", [&] { backend.sendMessage({0x90, 0x3C, 0x64}); });
        story.attempt("sends", [&] { backend.sendMessage({0xC1, 0x05}); });
        story.tell("in time", QTest::qWaitFor([&] { return rig.arrived().size() == 2 * (round + 1); }));
        story.tell("arrived", rig.arrived().join(QLatin1String(", ")));
        story.attempt("closes", [&] { backend.closePort(); });
    }
    story.attempt("closes once more", [&] { backend.closePort(); });
    story.find(backend);
    story.attempt("opens", [&] { backend.openPort(index, "RtMidi"); });
    rig.killTheServer();
    story.tell("dead", QTest::qWaitFor([&] { return !backend.isAlive(); }));
    story.tell("has room", backend.hasRoomFor(3));
    return story.lines;
}

QStringList inputTold(Rig &rig)
{
    Story story;
    MidiBackend &backend = rig.backend();
    std::mutex mutex;
    QStringList received;
    const auto take = [&] {
        const std::lock_guard lock(mutex);
        return received;
    };
    story.attempt("takes a callback", [&] {
        backend.setCallback([&](const Message &message) {
            const std::lock_guard lock(mutex);
            received.append(textOf(message));
        });
    });
    const unsigned int index = story.find(backend);
    story.attempt("opens", [&] { backend.openPort(index, "RtMidi"); });
    QTest::qWait(100);
    rig.letItSend({0x90, 0x3C, 0x64});
    rig.letItSend({0x80, 0x3C, 0x00});
    story.tell("in time", QTest::qWaitFor([&] { return take().size() == 2; }));
    story.tell("received", take().join(QLatin1String(", ")));
    story.attempt("closes", [&] { backend.closePort(); });
    rig.letItSend({0x90, 0x02, 0x02});
    QTest::qWait(100);
    story.tell("received", take().join(QLatin1String(", ")));
    return story.lines;
}

} // namespace

/// The backend that the unit tests of the MIDI ports believe, compared with JACK. In one go and the server's
/// death last: the library does not survive that twice in a process.
class tst_MidiDouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itDoesWhatJackDoes()
    {
        JackServer server;
        QVERIFY2(server.isRunning(), qPrintable(server.error()));
        const QProcessEnvironment environment = server.environment();
        for (const char *name : {"JACK_DEFAULT_SERVER", "JACK_NO_START_SERVER"}) {
            qputenv(name, environment.value(QLatin1String(name)).toLatin1());
        }
        {
            RealInput real;
            Double ours;
            const QStringList expected = inputTold(real);
            QVERIFY2(expected.contains(QStringLiteral("received: 90 3c 64, 80 3c 00")),
                     qPrintable(expected.join(QLatin1Char('\n'))));
            QCOMPARE(inputTold(ours).join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
        }
        RealOutput real(server);
        Double ours;
        const QStringList expected = outputTold(real);
        QVERIFY2(expected.contains(QStringLiteral("arrived: 90 3c 64, c1 05, 90 3c 64, c1 05")),
                 qPrintable(expected.join(QLatin1Char('\n'))));
        QVERIFY(expected.contains(QStringLiteral("dead: true")));
        QCOMPARE(outputTold(ours).join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
    }
};

QTEST_GUILESS_MAIN(tst_MidiDouble)
#include "tst_MidiDouble.moc"
