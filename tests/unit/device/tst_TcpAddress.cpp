#include "device/TcpAddress.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_TcpAddress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thisComputersPortsAreTaken();
    void everythingElseIsRefused_data();
    void everythingElseIsRefused();
    void whatElseIsAPortIsNotMeant();
};

void tst_TcpAddress::thisComputersPortsAreTaken()
{
    for (const quint16 port : {quint16(1), quint16(5000), quint16(65535)}) {
        const QString text = QStringLiteral("tcp:127.0.0.1:%1").arg(port);
        const auto address = TcpAddress::parse(text);
        QVERIFY2(address, qPrintable(text));
        QCOMPARE(address->port, port);
        QCOMPARE(address->toString(), text);
    }
}

void tst_TcpAddress::everythingElseIsRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"tcp:", "tcp:5000", "tcp:127.0.0.1", "tcp:127.0.0.1:", "tcp:127.0.0.1:0", "tcp:127.0.0.1:65536",
          "tcp:127.0.0.1:-1", "tcp:127.0.0.1:+5", "tcp:127.0.0.1: 5", "tcp:127.0.0.1:5000x",
          "tcp:192.168.0.7:5000", "tcp:0.0.0.0:5000", "tcp:device.example:5000",
          "tcp:127.0.0.1.device.example:5000", "tcp:[::1]:5000"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void tst_TcpAddress::everythingElseIsRefused()
{
    QFETCH(QString, text);
    QVERIFY(TcpAddress::isMeant(text));
    QVERIFY(!TcpAddress::parse(text));
}

void tst_TcpAddress::whatElseIsAPortIsNotMeant()
{
    for (const char *text : {"", "/dev/ttyACM0", "COM3", "tcp", "/tmp/tcp:1"}) {
        QVERIFY2(!TcpAddress::isMeant(QString::fromLatin1(text)), text);
    }
}

QTEST_APPLESS_MAIN(tst_TcpAddress)
#include "tst_TcpAddress.moc"
