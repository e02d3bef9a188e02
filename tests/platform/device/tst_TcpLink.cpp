#include "device/DevicePorts.h"
#include "device/SerialProtocol.h"
#include "device/TcpAddress.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tools/simulator/TcpCable.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>

#include <memory>

using simulator::TcpCable;

/// The device link over a TCP connection, with the simulator's cable at the other end.
class tst_TcpLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void reportsArriveUnchanged();
    void whatWasSentBeforeThePortWasOpenedArrives();
    void aPulledCableReleasesEveryButton();
    void whatCameBeforeTheCableWasPulledStillCounts();
    void aCablePutInAgainIsFound();
    void anAbsentDeviceIsNoNews();
    void requestsReachTheDevice();
    void aSecondProgramIsTurnedAway();
    void aProgramThatDoesNotReadIsTold();
    void aPortInUseIsTold();

private:
    void connectLink();

    std::unique_ptr<LogCapture> m_log;
    std::unique_ptr<TcpCable> m_cable;
    std::unique_ptr<SerialProtocol> m_link;
    QStringList m_happened;
};

void tst_TcpLink::init()
{
    m_log = std::make_unique<LogCapture>();
    m_happened.clear();
    m_cable = std::make_unique<TcpCable>(quint16(0));
    QVERIFY(m_cable->plug());
    QVERIFY(TcpAddress::parse(m_cable->address()));
    DevicePorts ports = DevicePorts::at(m_cable->address());
    m_link = std::make_unique<SerialProtocol>(std::move(ports.finder), std::move(ports.create));
    connect(m_link.get(), &SerialProtocol::portChange, this, [this](const QString &name) {
        m_happened.append(name.isNull() ? QStringLiteral("gone") : name);
    });
    connect(m_link.get(), &SerialProtocol::onButtonpress, this, [this](int button, bool down) {
        m_happened.append(QStringLiteral("%1 %2").arg(button).arg(down ? 1 : 0));
    });
    connect(m_link.get(), QOverload<char>::of(&SerialProtocol::onKnobevent), this,
            [this](char type) { m_happened.append(QString(QLatin1Char(type))); });
}

void tst_TcpLink::cleanup()
{
    m_link.reset();
    m_cable.reset();
    m_log.reset();
}

void tst_TcpLink::connectLink()
{
    QTRY_VERIFY(m_link->isConnected());
    QTRY_VERIFY(m_cable->isOpened());
    QCOMPARE(m_happened.takeFirst(), QStringLiteral("ZR"));
    QCOMPARE(m_log->takeLines(), QStringList{QStringLiteral("info: plugged")});
}

void tst_TcpLink::reportsArriveUnchanged()
{
    connectLink();
    QStringList expected;
    QByteArray reports;
    for (int byte = 0; byte < 256; ++byte) {
        reports += QByteArray("BP") + static_cast<char>(byte) + QByteArray("\n\r\n");
        expected.append(QStringLiteral("%1 1").arg(byte - '0'));
    }
    m_cable->send(reports);
    QTRY_COMPARE(m_happened, expected);
}

void tst_TcpLink::whatWasSentBeforeThePortWasOpenedArrives()
{
    connect(m_cable.get(), &TcpCable::openedChanged, this, [this](bool opened) {
        if (opened) {
            m_cable->send("BP3\n\r\nKND\n\r\n");
        }
    });
    QTRY_COMPARE(m_happened, QStringList({QStringLiteral("ZR"), QStringLiteral("3 1"), QStringLiteral("D")}));
}

void tst_TcpLink::aPulledCableReleasesEveryButton()
{
    connectLink();
    m_cable->send("BP3\n\r\n");
    QTRY_COMPARE(m_happened.size(), 1);
    QElapsedTimer clock;
    clock.start();
    m_cable->unplug();
    QTRY_VERIFY(m_happened.contains(QStringLiteral("gone")));
    QVERIFY(clock.elapsed() < 1500);
    QVERIFY(m_happened.contains(QStringLiteral("3 0")));
    QVERIFY(!m_link->isConnected());
}

void tst_TcpLink::whatCameBeforeTheCableWasPulledStillCounts()
{
    connectLink();
    m_cable->send("BP1\n\r\nBP2\n\r\n");
    m_cable->unplug();
    QTRY_VERIFY(m_happened.contains(QStringLiteral("gone")));
    QCOMPARE(m_happened.mid(0, 2), QStringList({QStringLiteral("1 1"), QStringLiteral("2 1")}));
}

void tst_TcpLink::aCablePutInAgainIsFound()
{
    connectLink();
    const QString before = m_cable->address();
    for (int round = 0; round < 3; ++round) {
        m_cable->unplug();
        QTRY_VERIFY(!m_link->isConnected());
        QVERIFY(m_cable->plug());
        QCOMPARE(m_cable->address(), before);
        QTRY_VERIFY(m_link->isConnected());
        m_happened.clear();
        m_cable->send("BP4\n\r\n");
        QTRY_COMPARE(m_happened, QStringList(QStringLiteral("4 1")));
    }
}

void tst_TcpLink::anAbsentDeviceIsNoNews()
{
    m_cable->unplug();
    QTest::qWait(3 * SerialProtocol::scanIntervalMs);
    QVERIFY(!m_link->isConnected());
    QCOMPARE(m_log->takeLines(), QStringList());
    QCOMPARE(m_happened, QStringList());
}

void tst_TcpLink::requestsReachTheDevice()
{
    connectLink();
    const QSignalSpy received(m_cable.get(), &TcpCable::received);
    SerialProtocol::queueRequest("AB\x01\x02");
    m_link->processNextRequest();
    QTRY_COMPARE(received.size(), 1);
    QCOMPARE(received.first().first().toByteArray(), QByteArray("AB\x01\x02"));
}

void tst_TcpLink::aSecondProgramIsTurnedAway()
{
    connectLink();
    QTcpSocket second;
    second.connectToHost(QHostAddress(QHostAddress::LocalHost), TcpAddress::parse(m_cable->address())->port);
    QTRY_COMPARE(second.state(), QAbstractSocket::UnconnectedState);
    m_cable->send("BP5\n\r\n");
    QTRY_COMPARE(m_happened, QStringList(QStringLiteral("5 1")));
}

void tst_TcpLink::aProgramThatDoesNotReadIsTold()
{
    m_link.reset();
    QTcpSocket program;
    program.setReadBufferSize(1);
    program.connectToHost(QHostAddress(QHostAddress::LocalHost), TcpAddress::parse(m_cable->address())->port);
    QTRY_VERIFY(m_cable->isOpened());
    const QSignalSpy overrun(m_cable.get(), &TcpCable::overrun);
    const QSignalSpy ended(m_cable.get(), &TcpCable::overrunEnded);
    QByteArray kept;
    for (int i = 0; i < 10000 && overrun.isEmpty(); ++i) {
        m_cable->send(QByteArray(4096, 'x'));
    }
    QCOMPARE(overrun.size(), 1);
    QVERIFY(!m_cable->isDelivered());
    program.setReadBufferSize(0);
    QTRY_VERIFY((program.readAll(), !ended.isEmpty()));
    QCOMPARE(ended.first().first().toInt(), 4096);
    QVERIFY(m_cable->isDelivered());
}

void tst_TcpLink::aPortInUseIsTold()
{
    TcpCable second(TcpAddress::parse(m_cable->address())->port);
    QVERIFY(!second.plug());
    QVERIFY2(second.errorString().contains(m_cable->address()), qPrintable(second.errorString()));
}

QTEST_GUILESS_MAIN(tst_TcpLink)
#include "tst_TcpLink.moc"
