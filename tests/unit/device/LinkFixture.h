#pragma once

#include "device/SerialProtocol.h"
#include "tests/support/log/LogCapture.h"
#include "tests/unit/device/FakePortLister.h"
#include "tests/unit/device/FakeSerialPort.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTest>

#include <memory>

namespace LinkTest
{

inline const QString plugged = QStringLiteral("info: plugged");
inline const QString unplugged = QStringLiteral("info: unplugged");
inline const QString failedToOpen = QStringLiteral("warning: failed to plugg busy");
inline const QString lost = QStringLiteral("warning: lost the device: Read error");
inline const QString zr = QStringLiteral("portChange ZR");
inline const QString gone = QStringLiteral("portChange null");

inline QStringList allReleases()
{
    QStringList releases;
    for (int button = 0; button < 10; ++button) {
        releases.append(QStringLiteral("button %1 up").arg(button));
    }
    return releases;
}

inline QStringList open(const QString &location = QStringLiteral("/dev/ttyACM0"))
{
    return {QStringLiteral("setPort ") + location, QStringLiteral("setBaudRate 115200"),
            QStringLiteral("clearError"), QStringLiteral("open ReadWrite")};
}

inline QByteArray message(const QByteArray &body)
{
    return body + "\n\r\n";
}

/// A link whose port and port list the test holds, made anew for each test function. What the link signals is
/// in m_happened, what it does with its port in m_bench.calls. A log line that a test does not take fails it.
class Fixture : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        m_log = std::make_unique<LogCapture>();
        m_bench = PortBench();
        m_happened.clear();
        auto lister = std::make_unique<FakePortLister>();
        m_lister = lister.get();
        m_link = std::make_unique<SerialProtocol>(
            std::make_unique<PortFinder>(std::move(lister)),
            [this]() -> std::unique_ptr<SerialPort> { return std::make_unique<FakeSerialPort>(&m_bench); });
        record(*m_link);
    }

    void cleanup()
    {
        QLoggingCategory::setFilterRules(QString());
        m_link.reset();
        deleteLeftovers();
        QCOMPARE(m_bench.portsAlive, 0);
        const QStringList unexpected = m_log->takeLines();
        m_log.reset();
        QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(QLatin1Char('\n'))));
    }

protected:
    void record(SerialProtocol &link)
    {
        connect(&link, &SerialProtocol::portChange, this, [this](const QString &name) {
            m_happened.append(QStringLiteral("portChange ") +
                              (name.isNull() ? QStringLiteral("null") : name));
        });
        connect(&link, &SerialProtocol::onButtonpress, this, [this](int button, bool pressing) {
            m_happened.append(QStringLiteral("button %1 ").arg(button) +
                              (pressing ? QStringLiteral("down") : QStringLiteral("up")));
        });
        connect(&link, QOverload<char>::of(&SerialProtocol::onKnobevent), this,
                [this](char type) { m_happened.append(QStringLiteral("type ") + QLatin1Char(type)); });
        connect(&link, QOverload<int>::of(&SerialProtocol::onKnobevent), this,
                [this](int count) { m_happened.append(QStringLiteral("count %1").arg(count)); });
    }
    void plug()
    {
        m_lister->show({devicePort()});
        m_link->scannSerial();
        QVERIFY(m_link->isConnected());
        forget();
    }
    void unplugByList()
    {
        m_lister->show({});
        m_link->scannSerial();
        QVERIFY(!m_link->isConnected());
        forget();
    }
    void forget()
    {
        m_bench.calls.clear();
        m_happened.clear();
        m_log->takeLines();
    }
    static void deleteLeftovers() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    std::unique_ptr<LogCapture> m_log;
    PortBench m_bench;
    QStringList m_happened;
    std::unique_ptr<SerialProtocol> m_link;
    FakePortLister *m_lister = nullptr;
};

} // namespace LinkTest
