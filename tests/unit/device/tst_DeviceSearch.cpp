#include "device/PortFinder.h"
#include "tests/support/main/Main.h"
#include "tests/unit/device/LinkFixture.h"

#include <QTest>

using Kind = DeviceFinding::Kind;

/// Why there is no device, as the link finds out while it looks.
class TestDeviceSearch : public LinkTest::Fixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Fixture::init();
        m_findings.clear();
        connect(m_link.get(), &SerialProtocol::findingChanged, this,
                [this] { m_findings.append(m_link->finding()); });
    }
    void cleanup() { Fixture::cleanup(); }

    void beforeTheFirstLookNothingIsSaid() { QCOMPARE(m_link->finding().kind, Kind::NotLooked); }

    void thatNothingIsThereIsToldOnce()
    {
        scan(5);
        QCOMPARE(kinds(), QVector<Kind>{Kind::Nothing});
    }

    void thePortsOfTheMachineItselfAreNoDevices()
    {
        m_lister->show({{QStringLiteral("ttyS0"), QStringLiteral("/dev/ttyS0"), QString(), 0}});
        scan();
        QCOMPARE(kinds(), QVector<Kind>{Kind::Nothing});
    }

    void aWrongDeviceIsNamed()
    {
        PortDescription wrong = portWithSerial(QStringLiteral("ttyUSB0"), QStringLiteral("A5001"));
        wrong.description = QStringLiteral("USB-Serial Adapter");
        m_lister->show({{QStringLiteral("ttyS0"), QStringLiteral("/dev/ttyS0"), QString(), 0}, wrong});
        scan(3);
        QCOMPARE(kinds(), QVector<Kind>{Kind::Other});
        QCOMPARE(m_link->finding().port, QStringLiteral("/dev/ttyUSB0"));
        QCOMPARE(m_link->finding().detail, QStringLiteral("USB-Serial Adapter"));
        m_lister->show({});
        scan();
        QCOMPARE(m_link->finding().kind, Kind::Nothing);
    }

    void aNamedPortThatIsMissingIsNamed()
    {
        SerialProtocol link(
            std::make_unique<PortFinder>(std::make_unique<FakePortLister>(), QStringLiteral("/dev/none")),
            [this]() -> std::unique_ptr<SerialPort> { return std::make_unique<FakeSerialPort>(&m_bench); });
        link.scannSerial();
        QCOMPARE(link.finding().kind, Kind::NamedMissing);
        QCOMPARE(link.finding().port, QStringLiteral("/dev/none"));
    }

    void theOpenPortIsNamed()
    {
        plug();
        QCOMPARE(kinds(), QVector<Kind>{Kind::Open});
        QCOMPARE(m_link->finding().port, QStringLiteral("/dev/ttyACM0"));
    }

    void aPortThatSomebodyHoldsIsToldApartFromOneThatDoesNotWork()
    {
        m_bench.opens = false;
        m_lister->show({devicePort()});
        scan(3);
        QCOMPARE(kinds(), QVector<Kind>{Kind::Held});
        QVERIFY(m_link->finding().holder.program.isEmpty()); // there is no such file here
        m_bench.errorAtOpen = SerialPort::Error::Open;
        m_bench.failure = QStringLiteral("no such device");
        scan(3);
        QCOMPARE(kinds(), QVector<Kind>({Kind::Held, Kind::Refused}));
        QCOMPARE(m_link->finding().detail, QStringLiteral("no such device"));
        m_bench.opens = true;
        scan();
        QCOMPARE(m_link->finding().kind, Kind::Open);
        m_log->takeLines();
    }

    void anotherPortThatIsRefusedForTheSameReasonIsNamed()
    {
        m_bench.opens = false;
        m_lister->show({devicePort()});
        scan();
        m_lister->show({devicePort(QStringLiteral("ttyACM1"))});
        scan();
        QCOMPARE(m_link->finding().port, QStringLiteral("/dev/ttyACM1"));
        m_log->takeLines();
    }

    void twoLossesAreNoPattern()
    {
        comeAndGo(2);
        QCOMPARE(m_link->finding().kind, Kind::Nothing);
    }

    void threeLossesWithinAMinuteAre()
    {
        comeAndGo(3);
        QCOMPARE(m_link->finding().kind, Kind::Vanishing);
        scan(DeviceSearch::looksForLosses - 6);
        QCOMPARE(m_link->finding().kind, Kind::Vanishing);
        scan(6);
        QCOMPARE(m_link->finding().kind, Kind::Nothing);
    }

    void aDeviceThatVanishesIsHeardOfWhenItComesAgain()
    {
        comeAndGo(3);
        m_bench.opens = false;
        m_lister->show({devicePort()});
        scan();
        QCOMPARE(m_link->finding().kind, Kind::Held);
        m_log->takeLines();
    }

private:
    void scan(int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            m_link->scannSerial();
        }
    }
    void comeAndGo(int times)
    {
        for (int i = 0; i < times; ++i) {
            plug();
            unplugByList();
        }
    }
    QVector<Kind> kinds() const
    {
        QVector<Kind> result;
        for (const DeviceFinding &finding : m_findings) {
            result.append(finding.kind);
        }
        return result;
    }

    QVector<DeviceFinding> m_findings;
};

QTEST_GUILESS_MAIN(TestDeviceSearch)
#include "tst_DeviceSearch.moc"
