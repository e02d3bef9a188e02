#include "tests/support/main/Main.h"
#include "tests/unit/tools/FakePort.h"
#include "tools/simulator/TcpCable.h"
#include "tools/simulator/posix/PtyPort.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <functional>
#include <unistd.h>
#include <utility>

namespace
{

/// A cable and the program at its end.
class Rig
{
    Q_DISABLE_COPY_MOVE(Rig)

public:
    Rig() = default;
    virtual ~Rig() = default;

    virtual simulator::DevicePort &cable() = 0;
    virtual void openPort() = 0;
    virtual void closePort() = 0;
    /// What has come since the last time.
    virtual QByteArray read() = 0;
    /// Something else takes the place that the cable needs.
    virtual void takeThePlace() = 0;
};

class PtyRig final : public Rig
{
public:
    PtyRig()
        : m_path(m_folder.filePath(QStringLiteral("device")))
        , m_cable(m_path)
    {
    }
    ~PtyRig() override { closePort(); }

    simulator::DevicePort &cable() override { return m_cable; }
    void openPort() override
    {
        m_program = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    }
    void closePort() override
    {
        if (m_program >= 0) {
            ::close(m_program);
        }
        m_program = -1;
    }
    QByteArray read() override
    {
        char bytes[4096];
        const ssize_t length = m_program < 0 ? 0 : ::read(m_program, bytes, sizeof bytes);
        return {bytes, static_cast<int>(qMax<ssize_t>(length, 0))};
    }
    void takeThePlace() override { QVERIFY(m_folder.remove()); }

private:
    QTemporaryDir m_folder;
    QString m_path;
    simulator::PtyPort m_cable;
    int m_program = -1;
};

class TcpRig final : public Rig
{
public:
    TcpRig()
        : m_port(freePort())
        , m_cable(m_port)
    {
    }

    simulator::DevicePort &cable() override { return m_cable; }
    void openPort() override
    {
        m_program.connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
        QVERIFY(m_program.waitForConnected());
    }
    void closePort() override { m_program.abort(); }
    QByteArray read() override { return m_program.readAll(); }
    void takeThePlace() override { QVERIFY(m_other.listen(QHostAddress::LocalHost, m_port)); }

private:
    static quint16 freePort()
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }

    quint16 m_port;
    simulator::TcpCable m_cable;
    QTcpSocket m_program;
    QTcpServer m_other;
};

class DoubleRig final : public Rig
{
public:
    DoubleRig()
    {
        m_cable.plugged = false;
        m_cable.opened = false;
    }

    simulator::DevicePort &cable() override { return m_cable; }
    void openPort() override
    {
        m_cable.opened = true;
        m_cable.delivered = false; // until the program reads
    }
    void closePort() override { m_cable.opened = false; }
    QByteArray read() override
    {
        m_cable.delivered = true;
        return std::exchange(m_cable.arrived, {});
    }
    void takeThePlace() override { m_cable.refusePlug = true; }

private:
    FakePort m_cable;
};

/// What a cable says while it is put in, opened, used and pulled.
QStringList told(Rig &rig)
{
    QStringList lines;
    simulator::DevicePort &cable = rig.cable();
    const auto note = [&](const char *what, bool how) {
        lines.append(QLatin1String(what) + (how ? QStringLiteral(": yes") : QStringLiteral(": no")));
    };
    const auto state = [&](const char *what) {
        lines.append(QLatin1String(what));
        note("plugged", cable.isPlugged());
        note("opened", cable.isOpened());
    };
    const auto becomes = [&](bool opened) {
        note("in time", QTest::qWaitFor([&] { return cable.isOpened() == opened; }));
    };
    const auto arrives = [&](const QByteArray &bytes) {
        QByteArray got;
        note("arrives", QTest::qWaitFor([&] {
                 got += rig.read().simplified();
                 return got == bytes;
             }));
        note("delivered", QTest::qWaitFor([&] { return cable.isDelivered(); }));
    };

    state("at first");
    cable.send("BP0\n\r\n");
    note("delivered", cable.isDelivered());
    note("goes in", cable.plug());
    note("goes in again", cable.plug());
    state("plugged");
    cable.send("BP1\n\r\n");
    note("delivered, with nobody there", cable.isDelivered());
    rig.openPort();
    becomes(true);
    state("opened");
    cable.send("BP2\n\r\n");
    arrives("BP2"); // and nothing of what was sent to nobody
    rig.closePort();
    becomes(false);
    state("closed");
    note("delivered", cable.isDelivered());
    rig.openPort();
    becomes(true);
    cable.unplug();
    state("pulled");
    note("delivered", cable.isDelivered());
    rig.closePort();
    note("goes in anew", cable.plug());
    state("plugged anew");
    cable.unplug();
    cable.unplug();
    state("pulled twice");
    rig.takeThePlace();
    note("goes in where it cannot", cable.plug());
    note("says why", !cable.errorString().isEmpty());
    state("refused");
    return lines;
}

} // namespace

/// The cable that the simulator's unit tests believe, compared with both real ones.
class tst_CableDouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itDoesWhatATerminalDoes() { compare(std::make_unique<PtyRig>()); }
    void itDoesWhatAConnectionDoes() { compare(std::make_unique<TcpRig>()); }

private:
    static void compare(std::unique_ptr<Rig> real)
    {
        const QStringList expected = told(*real);
        for (const char *wrong : {"in time: no", "arrives: no", "delivered: no"}) {
            QVERIFY2(!expected.contains(QLatin1String(wrong)), qPrintable(expected.join(QLatin1Char('\n'))));
        }
        DoubleRig ours;
        QCOMPARE(told(ours).join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
    }
};

QTEST_GUILESS_MAIN(tst_CableDouble)
#include "tst_CableDouble.moc"
