#include "device/QtSerialPort.h"
#include "device/TcpPortLister.h"
#include "tests/platform/device/Pty.h"
#include "tests/support/main/Main.h"
#include "tests/unit/device/FakePortLister.h"
#include "tests/unit/device/FakeSerialPort.h"

#include <QMetaEnum>
#include <QTcpServer>
#include <QTest>

#include <functional>
#include <memory>

namespace
{

/// A port and what is at its other end.
class PortRig
{
    Q_DISABLE_COPY_MOVE(PortRig)

public:
    PortRig() = default;
    virtual ~PortRig() = default;

    virtual SerialPort &port() = 0;
    virtual PortDescription place() const = 0;
    virtual void letTheDeviceSend(const QByteArray &bytes) = 0;
    virtual QByteArray takeWhatTheDeviceGot() = 0;
    virtual void pullTheCable() = 0;
    virtual void giveThePortToAnother() = 0;
    virtual void hideThePort() = 0;
};

class RealPort final : public PortRig
{
public:
    SerialPort &port() override { return m_port; }
    PortDescription place() const override { return {QString(), m_path, QString(), 0}; }
    void letTheDeviceSend(const QByteArray &bytes) override { m_pty.write(bytes); }
    QByteArray takeWhatTheDeviceGot() override { return m_pty.read(); }
    void pullTheCable() override { m_pty.hangUp(); }
    void giveThePortToAnother() override
    {
        m_other.setPort(place());
        m_other.open(QIODevice::ReadWrite);
    }
    void hideThePort() override { m_path += QStringLiteral("-gone"); }

private:
    Pty m_pty;
    QString m_path = m_pty.slave();
    QtSerialPort m_other;
    QtSerialPort m_port;
};

class Double final : public PortRig
{
public:
    SerialPort &port() override { return m_port; }
    PortDescription place() const override { return devicePort(); }
    void letTheDeviceSend(const QByteArray &bytes) override { m_port.receive(bytes); }
    QByteArray takeWhatTheDeviceGot() override
    {
        QByteArray got;
        for (const QString &call : qAsConst(m_bench.calls)) {
            if (call.startsWith(QLatin1String("write ")) && !call.contains(QLatin1String("closed"))) {
                got += QByteArray::fromHex(call.mid(6).toLatin1());
            }
        }
        m_bench.calls.clear();
        return got;
    }
    void pullTheCable() override { m_port.fail(SerialPort::Error::Resource); }
    void giveThePortToAnother() override { m_bench.opens = false; }
    void hideThePort() override
    {
        m_bench.opens = false;
        m_bench.errorAtOpen = SerialPort::Error::DeviceNotFound;
    }

private:
    PortBench m_bench;
    FakeSerialPort m_port{&m_bench};
};

/// What happens to a port, in words.
class Story
{
    Q_DISABLE_COPY_MOVE(Story)

public:
    explicit Story(PortRig &itsRig)
        : rig(itsRig)
        , port(itsRig.port())
    {
        QObject::connect(&port, &SerialPort::errorOccurred, &port, [this](SerialPort::Error error) {
            const char *name = QMetaEnum::fromType<SerialPort::Error>().valueToKey(static_cast<int>(error));
            lines.append(QStringLiteral("error ") + QLatin1String(name));
        });
        QObject::connect(&port, &SerialPort::readyRead, &port, [this] { isTold = true; });
    }

    void tell(const char *what, const QVariant &how)
    {
        lines.append(QLatin1String(what) + QLatin1Char(' ') + how.toString());
    }
    void open()
    {
        port.setPort(rig.place());
        port.setBaudRate(115200);
        tell("open", port.open(QIODevice::ReadWrite));
        tell("isOpen", port.isOpen());
    }
    /// The device sends, and the port tells.
    void receive(const QByteArray &bytes)
    {
        isTold = false;
        rig.letTheDeviceSend(bytes);
        tell("told", QTest::qWaitFor([this] { return isTold; }));
    }

    PortRig &rig;
    SerialPort &port;
    QStringList lines;
    bool isTold = false;
};

struct Behaviour {
    const char *name;
    std::function<void(Story &)> run;
};

const Behaviour behaviours[] = {
    {"it opens",
     [](Story &story) {
         story.tell("isOpen", story.port.isOpen());
         story.open();
     }},
    {"it opens once",
     [](Story &story) {
         story.open();
         story.open();
     }},
    {"it is not there",
     [](Story &story) {
         story.rig.hideThePort();
         story.open();
         story.tell("says why", !story.port.errorString().isEmpty());
     }},
    {"another program has it",
     [](Story &story) {
         story.rig.giveThePortToAnother();
         story.open();
         story.tell("says why", !story.port.errorString().isEmpty());
     }},
    {"errors are cleared", [](Story &story) { story.port.clearError(); }},
    {"a terminal has no such line",
     [](Story &story) {
         story.open();
         story.tell("dtr", story.port.setDataTerminalReady(true));
     }},
    {"bytes arrive once",
     [](Story &story) {
         story.open();
         story.receive("BP3\n\r\n");
         story.tell("bytes", story.port.readAll());
         story.tell("bytes", story.port.readAll());
     }},
    {"bytes wait for those that follow",
     [](Story &story) {
         story.open();
         story.receive("BP");
         story.receive("3\n\r\n");
         story.tell("bytes", story.port.readAll());
     }},
    {"it writes",
     [](Story &story) {
         story.open();
         story.tell("taken", story.port.write("AB\x01"));
         story.tell("flushed", story.port.flush());
         QByteArray got;
         story.tell("got", QTest::qWaitFor([&] {
                        got += story.rig.takeWhatTheDeviceGot();
                        return got == "AB\x01";
                    }));
     }},
    {"closed, it does nothing",
     [](Story &story) {
         story.tell("bytes", story.port.readAll());
         story.tell("taken", story.port.write("AB"));
         story.tell("flushed", story.port.flush());
         story.tell("dtr", story.port.setDataTerminalReady(true));
         story.port.close();
         story.tell("isOpen", story.port.isOpen());
     }},
    {"closing forgets what was not read",
     [](Story &story) {
         story.open();
         story.receive("BP3\n\r\n");
         story.port.close();
         story.tell("isOpen", story.port.isOpen());
         story.tell("bytes", story.port.readAll());
         story.open();
         story.tell("bytes", story.port.readAll());
     }},
    {"it is lost, and open until it is closed",
     [](Story &story) {
         story.open();
         story.receive("BP3\n\r\n");
         const int before = story.lines.size();
         story.rig.pullTheCable();
         const bool lost = QTest::qWaitFor([&] {
             const QStringList since = story.lines.mid(before);
             return since.contains(QStringLiteral("error Resource")) ||
                    since.contains(QStringLiteral("error Read"));
         });
         story.lines = story.lines.mid(0, before); // how often, and which of the two, differs
         story.tell("lost", lost);
         story.tell("isOpen", story.port.isOpen());
         story.tell("bytes", story.port.readAll());
         story.port.close();
         story.tell("isOpen", story.port.isOpen());
     }},
};

QStringList told(const Behaviour &behaviour, PortRig &rig)
{
    Story story(rig);
    behaviour.run(story);
    QObject::disconnect(&story.port, nullptr, &story.port, nullptr);
    return story.lines;
}

/// What a list of ports says while the only one comes and goes.
QStringList comingAndGoing(PortLister &lister, const QString &address, const std::function<void()> &come,
                           const std::function<void()> &go)
{
    QStringList lines;
    const auto look = [&](int expected) {
        QVector<PortDescription> ports;
        const bool listed = QTest::qWaitFor([&] {
            ports = lister.availablePorts();
            return ports.size() == expected;
        });
        lines.append(listed ? QStringLiteral("%1 ports").arg(expected) : QStringLiteral("too late"));
        for (const PortDescription &port : qAsConst(ports)) {
            lines.append(port.systemLocation == address ? QStringLiteral("to be opened by its address")
                                                        : port.systemLocation);
        }
        lines.append(lister.changeStamp() ? QStringLiteral("a stamp") : QStringLiteral("no stamp"));
    };
    look(0);
    come();
    look(1);
    look(1);
    go();
    look(0);
    come();
    look(1);
    return lines;
}

} // namespace

/// The ports that the link's unit tests believe, compared with those of the system.
class tst_PortDoubles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePortDoesTheSame_data()
    {
        QTest::addColumn<int>("index");
        int index = 0;
        for (const Behaviour &behaviour : behaviours) {
            QTest::newRow(behaviour.name) << index++;
        }
    }

    void thePortDoesTheSame()
    {
        QFETCH(int, index);
        RealPort real;
        Double ours;
        const QStringList expected = told(behaviours[index], real);
        QVERIFY(!expected.isEmpty());
        QVERIFY2(!expected.contains(QStringLiteral("told false")), qPrintable(expected.join(u'\n')));
        QVERIFY2(!expected.contains(QStringLiteral("lost false")), qPrintable(expected.join(u'\n')));
        QCOMPARE(told(behaviours[index], ours).join(u'\n'), expected.join(u'\n'));
    }

    void theListOfPortsDoesTheSame()
    {
        // A port that is free, and refuses until a device listens there.
        auto server = std::make_unique<QTcpServer>();
        QVERIFY(server->listen(QHostAddress::LocalHost));
        const quint16 number = server->serverPort();
        server->close();
        const TcpAddress address{number};
        TcpPortLister real(address, std::make_shared<QTcpSocket>());
        const QStringList expected = comingAndGoing(
            real, address.toString(), [&] { QVERIFY(server->listen(QHostAddress::LocalHost, number)); },
            [&] {
                QVERIFY(QTest::qWaitFor([&] { return server->hasPendingConnections(); }));
                server->nextPendingConnection()->abort();
                server->close();
            });
        QVERIFY2(!expected.contains(QStringLiteral("too late")), qPrintable(expected.join(u'\n')));

        FakePortLister ours;
        ours.hasStamp = false;
        const QStringList told = comingAndGoing(
            ours, devicePort().systemLocation, [&] { ours.show({devicePort()}); }, [&] { ours.show({}); });
        QCOMPARE(told, expected);
    }
};

QTEST_GUILESS_MAIN(tst_PortDoubles)
#include "tst_PortDoubles.moc"
