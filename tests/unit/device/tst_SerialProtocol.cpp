#include "tests/support/main/Main.h"
#include "tests/unit/device/LinkFixture.h"

using LinkTest::failedToOpen;
using LinkTest::message;
using LinkTest::open;
using LinkTest::plugged;
using LinkTest::zr;

/// Finding and opening the port, and what its reports become.
class TestSerialProtocol : public LinkTest::Fixture
{
    Q_OBJECT

private Q_SLOTS:
    void startsDisconnectedWithAPortAtHand()
    {
        QVERIFY(!m_link->isConnected());
        QCOMPARE(m_bench.portsMade, 1);
        QCOMPARE(m_bench.calls, QStringList());
    }

    void scansByItself()
    {
        auto *timer = m_link->findChild<QTimer *>();
        QVERIFY(timer && timer->isActive() && !timer->isSingleShot());
        QCOMPARE(timer->interval(), 500);
        const auto tick = [timer] { QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection); };
        tick();
        QCOMPARE(m_lister->cheapLooks, 1);
        m_lister->show({devicePort()});
        tick();
        QVERIFY(m_link->isConnected());
        m_lister->show({});
        tick();
        QVERIFY(!m_link->isConnected());
        m_log->takeLines();
    }

    void scanWithoutADeviceDoesNothing()
    {
        m_lister->show({portWithSerial(QStringLiteral("ttyUSB0"), QStringLiteral("hidfg"))});
        m_link->scannSerial();
        QVERIFY(!m_link->isConnected());
        QCOMPARE(m_bench.calls + m_happened, QStringList());
    }

    void opensTheDevicesPortInOrder()
    {
        m_lister->show({devicePort()});
        m_link->scannSerial();
        QVERIFY(m_link->isConnected());
        QCOMPARE(m_bench.calls, open() + QStringList(QStringLiteral("dtr on")));
        QCOMPARE(m_happened, QStringList(zr));
        QCOMPARE(m_log->takeLines(), QStringList(plugged));
        QCOMPARE(m_bench.portsMade, 1);
    }

    void furtherScansLeaveTheOpenPortAlone()
    {
        plug();
        m_link->scannSerial();
        m_lister->show(
            {devicePort(QStringLiteral("ttyACM1"))}); // whether it is the same port is not examined
        m_link->scannSerial();
        QCOMPARE(m_bench.calls + m_happened, QStringList());
    }

    void failedOpenIsLoggedAndTriedAgainByTheNextScan()
    {
        m_bench.opens = false;
        m_lister->show({devicePort()});
        m_link->scannSerial();
        QVERIFY(!m_link->isConnected());
        QCOMPARE(m_bench.calls, open());
        QCOMPARE(m_log->takeLines(), QStringList(failedToOpen));

        m_bench.opens = true;
        m_link->scannSerial();
        QVERIFY(m_link->isConnected());
        QCOMPARE(m_bench.calls, open() + open() + QStringList(QStringLiteral("dtr on")));
        QCOMPARE(m_bench.portsMade, 1);
        QCOMPARE(m_happened, QStringList(zr));
        QCOMPARE(m_log->takeLines(), QStringList(plugged));
    }

    void everyScanListsThePortsAnewWhileOpeningFails()
    {
        m_bench.opens = false;
        m_lister->show({devicePort()});
        for (int scan = 1; scan <= 30; ++scan) {
            m_link->scannSerial();
            QCOMPARE(m_lister->fullLooks, scan);
        }
        QCOMPARE(m_log->takeLines(), QStringList(failedToOpen));
    }

    void repeatedFailureIsAWarningOnlyWhenItIsNews()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("veltrix.device.debug=true"));
        m_bench.opens = false;
        m_lister->show({devicePort()});
        m_link->scannSerial();
        m_link->scannSerial();
        m_bench.failure = QStringLiteral("denied");
        m_link->scannSerial();
        m_lister->show({});
        m_link->scannSerial();
        m_lister->show({devicePort()});
        m_link->scannSerial();
        const QStringList expected = {failedToOpen, QStringLiteral("debug: failed to plugg busy"),
                                      QStringLiteral("warning: failed to plugg denied"),
                                      QStringLiteral("warning: failed to plugg denied")};
        QCOMPARE(m_log->takeLines(), expected);
    }

    void aRefusalIsToldWhenItChangesAndWhenItEnds()
    {
        QStringList told;
        connect(m_link.get(), &SerialProtocol::portRefused, this,
                [&told](const QString &reason) { told.append(reason); });
        m_bench.opens = false;
        m_lister->show({devicePort()});
        m_link->scannSerial();
        m_link->scannSerial();
        QCOMPARE(told, QStringList(QStringLiteral("busy")));
        m_lister->show({});
        m_link->scannSerial();
        m_link->scannSerial();
        QCOMPARE(told, QStringList({QStringLiteral("busy"), QString()}));
        m_lister->show({devicePort()});
        m_link->scannSerial();
        m_bench.opens = true;
        m_link->scannSerial();
        QCOMPARE(told, QStringList({QStringLiteral("busy"), QString(), QStringLiteral("busy"), QString()}));
        m_log->takeLines();
    }

    void deviceThatGoesWhileOpeningFailsIsNotAnUnplug()
    {
        m_bench.opens = false;
        m_lister->show({devicePort()});
        m_link->scannSerial();
        m_lister->show({});
        m_link->scannSerial();
        QCOMPARE(m_happened, QStringList());
        QCOMPARE(m_log->takeLines(), QStringList(failedToOpen));
    }

    void reportsBecomeSignals()
    {
        plug();
        m_bench.current->receive(message("BP0") + message("KN+") + message("12") + message("-3") +
                                 message("BX1") + message("BR0"));
        QCOMPARE(m_happened, QStringList({QStringLiteral("button 0 down"), QStringLiteral("type +"),
                                          QStringLiteral("count 12"), QStringLiteral("count -3"),
                                          QStringLiteral("button 0 up")}));
    }

    void oneReadPerNotification()
    {
        plug();
        m_bench.current->receive(message("BP0"));
        QCOMPARE(m_bench.calls, QStringList(QStringLiteral("readAll")));
    }

    void shortReadsLoseNothing()
    {
        plug();
        m_bench.bytesPerRead = 1;
        m_bench.current->hold(message("BP4") + message("BR4"));
        for (int i = 0; i < 12; ++i) {
            m_bench.current->receive("");
        }
        QCOMPARE(m_happened, QStringList({QStringLiteral("button 4 down"), QStringLiteral("button 4 up")}));
    }

    void bytesBeforeTheConnectionAreNotRead()
    {
        m_bench.opens = false;
        m_lister->show({devicePort()});
        m_link->scannSerial();
        m_log->takeLines();
        m_bench.calls.clear();
        m_bench.current->receive(message("BP1"));
        m_link->readSerial();
        QCOMPARE(m_bench.calls + m_happened, QStringList());
    }

    void slotThatScansWhenPluggedChangesNothing()
    {
        connect(m_link.get(), &SerialProtocol::portChange, m_link.get(), &SerialProtocol::scannSerial);
        m_lister->show({devicePort()});
        m_link->scannSerial();
        QCOMPARE(m_happened, QStringList(zr));
        QCOMPARE(m_log->takeLines(), QStringList(plugged));
    }

    void slotThatReadsKeepsTheOrder()
    {
        plug();
        bool first = true;
        connect(m_link.get(), &SerialProtocol::onButtonpress, this, [this, &first] {
            if (first) {
                first = false;
                m_bench.current->hold(message("BP3"));
                m_link->readSerial();
            }
        });
        m_bench.current->receive(message("BP1") + message("BP2"));
        QCOMPARE(m_happened, QStringList({QStringLiteral("button 1 down"), QStringLiteral("button 2 down"),
                                          QStringLiteral("button 3 down")}));
    }
};

QTEST_GUILESS_MAIN(TestSerialProtocol)
#include "tst_SerialProtocol.moc"
