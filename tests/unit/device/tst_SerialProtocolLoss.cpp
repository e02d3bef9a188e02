#include "tests/support/main/Main.h"
#include "tests/unit/device/LinkFixture.h"

using LinkTest::allReleases;
using LinkTest::gone;
using LinkTest::lost;
using LinkTest::message;
using LinkTest::open;
using LinkTest::plugged;
using LinkTest::unplugged;
using LinkTest::zr;

/// How the link ends: unplugged, hung up, or failing in the middle of things.
class TestSerialProtocolLoss : public LinkTest::Fixture
{
    Q_OBJECT

private Q_SLOTS:
    void unplugReleasesAllButtonsInOrderAndThenSaysSo()
    {
        plug();
        m_bench.current->receive(message("BP3") + message("BP7"));
        m_happened.clear();
        m_bench.calls.clear();
        m_lister->show({});
        m_link->scannSerial();
        QVERIFY(!m_link->isConnected());
        QCOMPARE(m_happened, allReleases() + QStringList(gone));
        QCOMPARE(m_bench.calls, QStringList({QStringLiteral("dtr off"), QStringLiteral("close")}));
        QCOMPARE(m_log->takeLines(), QStringList(unplugged));
        QCOMPARE(m_bench.portsAlive, 1); // deleted later, not at once
        deleteLeftovers();
        QCOMPARE(m_bench.portsAlive, 0);
    }

    void anUnplugIsAnnouncedBeforeItsReleases()
    {
        plug();
        connect(m_link.get(), &SerialProtocol::aboutToUnplug, this,
                [this] { m_happened.append(QStringLiteral("about to unplug")); });
        m_lister->show({});
        m_link->scannSerial();
        QCOMPARE(m_happened,
                 QStringList(QStringLiteral("about to unplug")) + allReleases() + QStringList(gone));
        m_log->takeLines();
    }

    void scansAfterAnUnplugDoNothing()
    {
        plug();
        unplugByList();
        m_link->scannSerial();
        m_link->readSerial();
        QCOMPARE(m_happened, QStringList());
    }

    void pluggingInAgainTakesANewPort()
    {
        plug();
        unplugByList();
        m_lister->show({devicePort(QStringLiteral("ttyACM1"))});
        m_link->scannSerial();
        QCOMPARE(m_bench.portsMade, 2);
        QCOMPARE(m_bench.calls, open(QStringLiteral("/dev/ttyACM1")) + QStringList(QStringLiteral("dtr on")));
        QCOMPARE(m_happened, QStringList(zr));
        m_bench.current->receive(message("BP1"));
        QCOMPARE(m_happened.last(), QStringLiteral("button 1 down"));
        m_log->takeLines();
    }

    void messageCutByAnUnplugIsNotContinuedByTheNextPlug()
    {
        plug();
        m_bench.current->receive("BP");
        unplugByList();
        m_lister->show({devicePort()});
        m_link->scannSerial();
        m_happened.clear();
        m_bench.current->receive(message("5"));
        QCOMPARE(m_happened, QStringList(QStringLiteral("count 5")));
        m_log->takeLines();
    }

    void oldPortsSignalsAreNotHeardAfterAnUnplug()
    {
        plug();
        FakeSerialPort *const old = m_bench.current;
        unplugByList();
        m_lister->show({devicePort()});
        m_link->scannSerial();
        m_happened.clear();
        old->receive(message("BP1"));
        old->fail(SerialPort::Error::Read);
        QCoreApplication::sendPostedEvents(m_link.get());
        m_link->scannSerial();
        QCOMPARE(m_happened, QStringList());
        m_log->takeLines();
    }

    void errorsThatEndTheLink_data()
    {
        QTest::addColumn<SerialPort::Error>("error");
        QTest::newRow("Read") << SerialPort::Error::Read;
        QTest::newRow("Write") << SerialPort::Error::Write;
        QTest::newRow("Resource") << SerialPort::Error::Resource;
        QTest::newRow("Permission") << SerialPort::Error::Permission;
    }

    void errorsThatEndTheLink()
    {
        QFETCH(SerialPort::Error, error);
        plug();
        m_bench.current->fail(error);
        QCOMPARE(m_bench.calls + m_happened, QStringList()); // not from inside the port's own signal
        QVERIFY(m_link->isConnected());

        QCoreApplication::sendPostedEvents(m_link.get());
        QCOMPARE(m_bench.calls, QStringList({QStringLiteral("readAll"), QStringLiteral("close")}));
        QCOMPARE(m_happened, QStringList());
        QCOMPARE(m_log->takeLines(), QStringList(QStringLiteral("warning: lost the device: %1 error")
                                                     .arg(QLatin1String(QTest::currentDataTag()))));

        m_lister->show({});
        m_link->scannSerial();
        QVERIFY(!m_link->isConnected());
        QCOMPARE(m_happened, allReleases() + QStringList(gone));
        QCOMPARE(m_log->takeLines(), QStringList(unplugged));
    }

    void errorsThatDoNotEndTheLink_data()
    {
        QTest::addColumn<SerialPort::Error>("error");
        QTest::newRow("none") << SerialPort::Error::None;
        QTest::newRow("unsupported") << SerialPort::Error::UnsupportedOperation;
        QTest::newRow("timeout") << SerialPort::Error::Timeout;
        QTest::newRow("unknown") << SerialPort::Error::Unknown;
        QTest::newRow("not open") << SerialPort::Error::NotOpen;
    }

    void errorsThatDoNotEndTheLink()
    {
        QFETCH(SerialPort::Error, error);
        plug();
        m_bench.current->fail(error);
        QCoreApplication::sendPostedEvents(m_link.get());
        m_link->scannSerial();
        m_bench.current->receive(message("BP1"));
        QCOMPARE(m_happened, QStringList(QStringLiteral("button 1 down")));
    }

    void lostPortThatIsStillThereIsGivenUpAndOpenedByOneScan()
    {
        plug();
        for (int i = 0; i < PortFinder::settlingLooks; ++i) {
            m_link->scannSerial();
        }
        m_bench.current->fail(SerialPort::Error::Read);
        QCoreApplication::sendPostedEvents(m_link.get());
        m_bench.calls.clear();
        const int looks = m_lister->fullLooks;
        m_link->scannSerial();
        QVERIFY(m_link->isConnected());
        QCOMPARE(m_happened, allReleases() + QStringList({gone, zr}));
        QCOMPARE(m_bench.calls, open() + QStringList(QStringLiteral("dtr on")));
        QCOMPARE(m_bench.portsMade, 2);
        QCOMPARE(m_lister->fullLooks, looks + 1);
        QCOMPARE(m_log->takeLines(), QStringList({lost, unplugged, plugged}));
        m_bench.current->receive(message("BP2"));
        QCOMPARE(m_happened.last(), QStringLiteral("button 2 down"));
    }

    void scanThatIsFasterThanTheQueuedCloseGivesThePortUpAsWell()
    {
        plug();
        m_bench.current->fail(SerialPort::Error::Read);
        m_link->scannSerial();
        QCOMPARE(m_happened, allReleases() + QStringList({gone, zr}));
        m_bench.calls.clear();
        QCoreApplication::sendPostedEvents(
            m_link.get()); // comes too late for the old port, leaves the new one open
        QVERIFY(m_bench.current->isOpen());
        QVERIFY(!m_bench.calls.contains(QStringLiteral("close")));
        QCOMPARE(m_log->takeLines(), QStringList({lost, unplugged, plugged}));
    }

    void manyErrorsCloseThePortOnce()
    {
        plug();
        for (int i = 0; i < 100000; ++i) {
            m_bench.current->fail(SerialPort::Error::Read);
        }
        QCoreApplication::sendPostedEvents(m_link.get());
        QCOMPARE(m_bench.calls, QStringList({QStringLiteral("readAll"), QStringLiteral("close")}));
        QCOMPARE(m_log->takeLines(), QStringList(lost));
    }

    void bytesFromBeforeTheHangUpAreStillDecoded()
    {
        plug();
        m_bench.current->hold(message("BP1") + message("BR1"));
        m_bench.current->fail(SerialPort::Error::Resource);
        QCoreApplication::sendPostedEvents(m_link.get());
        QCOMPARE(m_happened, QStringList({QStringLiteral("button 1 down"), QStringLiteral("button 1 up")}));
        m_log->takeLines();
    }

    void readErrorInMidMessageEndsTheLinkWithoutAnEvent()
    {
        plug();
        m_bench.bytesUntilError = 8;
        m_bench.current->receive(message("BP1") + message("BR1"));
        QCoreApplication::sendPostedEvents(m_link.get());
        QCOMPARE(m_happened, QStringList(QStringLiteral("button 1 down")));
        m_happened.clear();
        m_bench.bytesUntilError = 1 << 30;
        m_link->scannSerial();
        QCOMPARE(m_happened, allReleases() + QStringList({gone, zr}));
        m_log->takeLines();
    }

    void everyLengthUntilTheReadErrorEndsInTheSameState()
    {
        const QByteArray stream = message("BP1") + message("KND") + message("12") + message("BR1");
        for (int length = 1; length <= stream.size(); ++length) {
            cleanup();
            init();
            plug();
            m_bench.bytesUntilError = length;
            m_bench.bytesPerRead = 3;
            m_bench.current->hold(stream);
            for (int i = 0; i < stream.size() && m_bench.current->isOpen(); ++i) {
                m_bench.current->receive("");
                QCoreApplication::sendPostedEvents(m_link.get());
            }
            m_lister->show({});
            m_happened.clear();
            m_link->scannSerial();
            QVERIFY(!m_link->isConnected());
            QCOMPARE(m_happened, allReleases() + QStringList(gone));
            m_log->takeLines();
        }
    }

    void readingALostPortIsSafe()
    {
        plug();
        m_bench.current->fail(SerialPort::Error::Read);
        QCoreApplication::sendPostedEvents(m_link.get());
        m_bench.calls.clear();
        m_bench.current->receive(message("BP1"));
        m_link->readSerial();
        QCOMPARE(m_bench.calls + m_happened, QStringList());
        m_log->takeLines();
    }

    void errorWhileRaisingDtrLosesTheLinkButNotTheAnnouncement()
    {
        m_bench.errorAtDtr = SerialPort::Error::Read;
        m_lister->show({devicePort()});
        m_link->scannSerial();
        QCOMPARE(m_happened, QStringList(zr));
        QCoreApplication::sendPostedEvents(m_link.get());
        m_lister->show({});
        m_link->scannSerial();
        QCOMPARE(m_happened, QStringList(zr) + allReleases() + QStringList(gone));
        QCOMPARE(m_log->takeLines(), QStringList({lost, plugged, unplugged}));
    }

    void slotThatScansFindsThePortGoneAndTheRestOfTheReadIsDropped()
    {
        plug();
        connect(m_link.get(), &SerialProtocol::onButtonpress, this, [this](int, bool pressing) {
            if (pressing) {
                m_lister->show({});
                m_link->scannSerial();
            }
        });
        m_bench.current->receive(message("BP1") + message("BP2") + message("BP3"));
        QCOMPARE(m_happened,
                 QStringList(QStringLiteral("button 1 down")) + allReleases() + QStringList(gone));
        m_log->takeLines();
    }

    void slotThatScansDuringTheLossDoesNotPlugInTheMiddleOfIt()
    {
        plug();
        connect(m_link.get(), &SerialProtocol::onButtonpress, this, [this] {
            m_lister->show({devicePort()});
            m_link->scannSerial();
        });
        m_lister->show({});
        m_link->scannSerial();
        QCOMPARE(m_happened, allReleases() + QStringList(gone));
        m_link->scannSerial();
        QCOMPARE(m_happened.last(), zr);
        m_log->takeLines();
    }

    void destroyingAConnectedLinkIsQuiet()
    {
        plug();
        m_bench.current->fail(SerialPort::Error::Read);
        m_link.reset();
        QCoreApplication::sendPostedEvents();
        QCOMPARE(m_happened, QStringList());
        QCOMPARE(m_log->takeLines(), QStringList(lost));
    }
};

QTEST_GUILESS_MAIN(TestSerialProtocolLoss)
#include "tst_SerialProtocolLoss.moc"
