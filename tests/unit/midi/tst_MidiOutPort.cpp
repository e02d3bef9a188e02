#include "midi/MidiOutPort.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/midi/FakeMidiBackend.h"

#include <QTest>

using Bytes = std::vector<unsigned char>;

class tst_MidiOutPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_midi = std::make_shared<FakeMidi>();
        m_midi->ports = {"loop:FROM host"};
        m_log = std::make_unique<LogCapture>();
        m_port = std::make_unique<MidiOutPort>(std::make_unique<FakeMidiBackend>(m_midi));
    }

    void cleanup()
    {
        m_port.reset();
        m_log.reset();
    }

    void sendsTheBytesAsTheyAre()
    {
        QCOMPARE(m_port->openPort(0), 0);
        send({0x90, 0x3C, 0x64});
        send({0xF8});
        QCOMPARE(m_midi->sent, (std::vector<Bytes>{{0x90, 0x3C, 0x64}, {0xF8}}));
        QCOMPARE(m_log->lines(), QStringList());
    }

    void sendingOnAPortThatWasNeverOpenedDoesNothing()
    {
        send({0x90, 0x3C, 0x64});
        QCOMPARE(m_midi->calls["sendMessage"], 0);
        QCOMPARE(m_log->lines(), QStringList());
    }

    void sendingOnAClosedPortDoesNothing()
    {
        QCOMPARE(m_port->openPort(0), 0);
        m_port->closePort();
        send({0x90, 0x3C, 0x64});
        QCOMPARE(m_midi->calls["sendMessage"], 0);
    }

    void sendingAfterAFailedOpenDoesNothing()
    {
        m_midi->fail["openPort"] = {1, 1};
        QVERIFY(m_port->openPort(0) != 0);
        send({0x90, 0x3C, 0x64});
        QCOMPARE(m_midi->calls["sendMessage"], 0);
    }

    void anEmptyMessageIsDropped()
    {
        QCOMPARE(m_port->openPort(0), 0);
        send({});
        m_port->sendMessage(nullptr);
        QCOMPARE(m_midi->calls["sendMessage"], 0);
        QCOMPARE(m_log->lines(), QStringList());
    }

    void anErrorIsLoggedAndTheNextMessageIsSent()
    {
        m_midi->fail["sendMessage"] = {1, 1};
        QCOMPARE(m_port->openPort(0), 0);
        send({0x90, 0x3C, 0x64});
        send({0x80, 0x3C, 0x00});
        QCOMPARE(m_midi->sent, (std::vector<Bytes>{{0x80, 0x3C, 0x00}}));
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("sendMessage failed")));
        QVERIFY(m_port->isOpen());
    }

    void aServerThatHasGoneIsLoggedOnceAndNeverSentTo()
    {
        QCOMPARE(m_port->openPort(0), 0);
        m_midi->alive = false;
        for (int i = 0; i < 1000; ++i) {
            send({0x90, 0x3C, 0x64});
        }
        QCOMPARE(m_midi->calls["sendMessage"], 0);
        QCOMPARE(m_log->lines().size(), 1);
        QVERIFY(m_log->lines().first().contains(QStringLiteral("has gone")));
    }

    void aServerThatFallsBehindIsLoggedOnceEachTime()
    {
        QCOMPARE(m_port->openPort(0), 0);
        for (int stall = 1; stall <= 2; ++stall) {
            m_midi->hasRoom = false;
            send({0x90, 0x3C, 0x64});
            send({0x80, 0x3C, 0x00});
            m_midi->hasRoom = true;
            send({0xB0, 0x07, 0x7F});
            QCOMPARE(m_midi->calls["sendMessage"], stall);
            QCOMPARE(m_log->linesHolding(QStringLiteral("keep up")).size(), stall);
        }
        QCOMPARE(m_midi->sent, (std::vector<Bytes>{{0xB0, 0x07, 0x7F}, {0xB0, 0x07, 0x7F}}));
    }

    void theBackendGoesWithThePort()
    {
        m_port.reset();
        QCOMPARE(m_midi->destroyed, 1);
    }

private:
    void send(Bytes message) { m_port->sendMessage(&message); }

    std::shared_ptr<FakeMidi> m_midi;
    std::unique_ptr<LogCapture> m_log;
    std::unique_ptr<MidiOutPort> m_port;
};

QTEST_GUILESS_MAIN(tst_MidiOutPort)
#include "tst_MidiOutPort.moc"
