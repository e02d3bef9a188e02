#include "midi/MidiOutPort.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/midi/FakeMidiBackend.h"

#include <QTest>

class tst_MidiPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_midi = std::make_shared<FakeMidi>();
        m_midi->ports = {"Midi Through:0", "loop:FROM host"};
        m_log = std::make_unique<LogCapture>();
    }

    void cleanup() { m_log.reset(); }

    void namesComeInTheLibrarysOrder()
    {
        MidiOutPort port(backend());
        QCOMPARE(port.portCount(), 2);
        QCOMPARE(port.portNames(),
                 QStringList({QStringLiteral("Midi Through:0"), QStringLiteral("loop:FROM host")}));
        QCOMPARE(m_log->lines(), QStringList());
    }

    void namesAreLatin1()
    {
        m_midi->ports = {"Fl\xF6te"};
        MidiOutPort port(backend());
        QCOMPARE(port.portNames(), QStringList(QStringLiteral("Fl\u00F6te")));
    }

    void opensUnderThePortNameRtMidi()
    {
        MidiOutPort port(backend());
        QVERIFY(!port.isOpen());
        QCOMPARE(port.openPort(1), 0);
        QVERIFY(port.isOpen());
        QCOMPARE(m_midi->opened, std::vector<unsigned int>{1});
        QCOMPARE(m_midi->openedAs, std::string("RtMidi"));
    }

    void openingAnOpenPortIsANoOp()
    {
        MidiOutPort port(backend());
        QCOMPARE(port.openPort(1), 0);
        QCOMPARE(port.openPort(0), 0);
        QVERIFY(port.isOpen());
        QCOMPARE(m_midi->calls["openPort"], 1);
        QCOMPARE(m_midi->opened, std::vector<unsigned int>{1});
    }

    void aFailedOpenIsLoggedAndReported()
    {
        m_midi->fail["openPort"] = {1, 1};
        MidiOutPort port(backend());
        QVERIFY(port.openPort(0) != 0);
        QVERIFY(!port.isOpen());
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("openPort failed")));
        QCOMPARE(port.openPort(0), 0);
        QVERIFY(port.isOpen());
    }

    void aPortThatIsNotThereIsNotAskedFor_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("negative") << -1;
        QTest::newRow("behind the last") << 2;
        QTest::newRow("far") << 1000000;
    }

    void aPortThatIsNotThereIsNotAskedFor()
    {
        QFETCH(int, index);
        MidiOutPort port(backend());
        QVERIFY(port.openPort(index) != 0);
        QVERIFY(!port.isOpen());
        QCOMPARE(m_midi->calls["openPort"], 0);
        QCOMPARE(m_log->lines().size(), 1);
    }

    void closingLetsThePortBeOpenedAgain()
    {
        MidiOutPort port(backend());
        QCOMPARE(port.openPort(0), 0);
        port.closePort();
        QVERIFY(!port.isOpen());
        QCOMPARE(m_midi->calls["closePort"], 1);
        QCOMPARE(port.openPort(1), 0);
        QCOMPARE(m_midi->opened, (std::vector<unsigned int>{0, 1}));
    }

    void aFailedCloseCountsAsClosed()
    {
        m_midi->fail["closePort"] = {1, 1};
        MidiOutPort port(backend());
        QCOMPARE(port.openPort(0), 0);
        port.closePort();
        QVERIFY(!port.isOpen());
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("closePort failed")));
    }

    void errorsWhileListingLeaveWhatWasRead()
    {
        m_midi->fail["portName"] = {2, 2};
        MidiOutPort port(backend());
        QCOMPARE(port.portNames(), QStringList(QStringLiteral("Midi Through:0")));
        QCOMPARE(m_log->lines(), QStringList(QStringLiteral("portName failed")));

        m_midi->fail["portCount"] = {1, 100};
        QCOMPARE(port.portCount(), 0);
        QCOMPARE(port.portNames(), QStringList());
        QVERIFY(port.openPort(0) != 0);
    }

    void withoutAMidiSystemThereAreNoPorts()
    {
        MidiOutPort port(std::unique_ptr<MidiBackend>{});
        QCOMPARE(port.portCount(), 0);
        QCOMPARE(port.portNames(), QStringList());
        QVERIFY(port.openPort(0) != 0);
        port.closePort();
        std::vector<unsigned char> message{0x90, 60, 100};
        port.sendMessage(&message);
        QVERIFY(!port.isOpen());
    }

private:
    std::unique_ptr<MidiBackend> backend() { return std::make_unique<FakeMidiBackend>(m_midi); }

    std::shared_ptr<FakeMidi> m_midi;
    std::unique_ptr<LogCapture> m_log;
};

QTEST_GUILESS_MAIN(tst_MidiPort)
#include "tst_MidiPort.moc"
