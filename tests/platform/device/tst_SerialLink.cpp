#include "device/QtPortLister.h"
#include "device/SerialProtocol.h"
#include "tests/platform/device/Pty.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/unit/device/FakePortLister.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <memory>

namespace
{

const QString zr = QStringLiteral("portChange ZR");
const QString gone = QStringLiteral("portChange null");

/// The system calls the end of a terminal the one or the other.
bool isLoss(const QString &line)
{
    return line == QLatin1String("warning: lost the device: Read error") ||
           line == QLatin1String("warning: lost the device: Resource error");
}

/// CPU time that this process has used, all threads, in milliseconds.
double cpuMilliseconds()
{
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Points the link at the target in one step: there is no moment without it.
bool pointTo(const QString &link, const QString &target)
{
    const QString fresh = link + QStringLiteral(".new");
    return QFile::link(target, fresh) && std::rename(QFile::encodeName(fresh), QFile::encodeName(link)) == 0;
}

} // namespace

/// The link over QSerialPort and pseudo terminals: what the fake port of the unit tests only claims.
class TestSerialLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_log = std::make_unique<LogCapture>();
        m_happened.clear();
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("port"));
        m_pty = std::make_unique<Pty>();
        QVERIFY(m_pty->isValid());
        m_link = std::make_unique<SerialProtocol>(
            std::make_unique<PortFinder>(std::make_unique<FakePortLister>(), m_path));
        record();
    }

    void cleanup()
    {
        m_link.reset();
        const QStringList unexpected = takeLog();
        m_log.reset();
        QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(QLatin1Char('\n'))));
    }

    void connectsAndDecodes()
    {
        plug();
        m_pty->write("BP3\n\r\nBR3\n\r\nKND\n\r\n-12\n\r\n");
        QTRY_COMPARE(m_happened,
                     QStringList({zr, QStringLiteral("button 3 down"), QStringLiteral("button 3 up"),
                                  QStringLiteral("type D"), QStringLiteral("count -12")}));
    }

    void piecesWithPausesAreJoined()
    {
        plug();
        for (const char *piece : {"B", "P", "5", "\n", "\r", "\n"}) {
            m_pty->write(piece);
            QTest::qWait(5);
        }
        QTRY_COMPARE(m_happened.last(), QStringLiteral("button 5 down"));
    }

    void bytesPassUnchanged()
    {
        plug();
        for (int byte = 0; byte < 256; ++byte) {
            m_happened.clear();
            m_pty->write(QByteArray("BP") + static_cast<char>(byte) + QByteArray("\n\r\n"));
            // here.
            QTRY_COMPARE(m_happened, QStringList(QStringLiteral("button %1 down").arg(byte - 48)));
        }
    }

    void requestReachesTheDevice()
    {
        plug();
        SerialProtocol::queueRequest("AB\x01\x02");
        m_link->processNextRequest();
        QByteArray received;
        QTRY_COMPARE((received += m_pty->read()), QByteArray("AB\x01\x02"));
    }

    void hangUpIsNoticedWithinAScanAndCostsNothing()
    {
        plug();
        m_pty->write("BP1\n\r\n");
        QTRY_COMPARE(m_happened.size(), 2);
        m_happened.clear();
        const double before = cpuMilliseconds();
        QElapsedTimer clock;
        clock.start();
        QVERIFY(QFile::remove(m_path)); // the terminal's number may at once be another test's
        m_pty->hangUp();
        QTRY_VERIFY_WITH_TIMEOUT(!m_link->isConnected(), 3000);
        QVERIFY2(clock.elapsed() < 1500, qPrintable(QString::number(clock.elapsed())));
        QTest::qWait(static_cast<int>(1000 - qMin<qint64>(clock.elapsed(), 1000)));
        const double used = cpuMilliseconds() - before;
        QVERIFY2(used < 50, qPrintable(QStringLiteral("%1 ms of CPU in a second").arg(used)));
        QCOMPARE(m_happened.size(), 11);
        QCOMPARE(m_happened.last(), gone);
        expectLoss();
    }

    void portThatIsBackBeforeTheNextScanWorks()
    {
        plug();
        Pty second;
        QVERIFY(pointTo(m_path, second.slave()));
        m_pty->hangUp();
        QTRY_COMPARE_WITH_TIMEOUT(m_happened.count(zr), 2, 2000);
        QCOMPARE(m_happened.count(gone), 1);
        QVERIFY(m_link->isConnected());
        second.write("BP2\n\r\n");
        QTRY_COMPARE(m_happened.last(), QStringLiteral("button 2 down"));
        const QStringList log = takeLog();
        QCOMPARE(log.size(), 3);
        QVERIFY2(isLoss(log.first()), qPrintable(log.first()));
        QCOMPARE(log.mid(1),
                 QStringList({QStringLiteral("info: unplugged"), QStringLiteral("info: plugged")}));
    }

    void manyHangUpsAndReturns()
    {
        plug();
        for (int round = 0; round < 20; ++round) {
            auto next = std::make_unique<Pty>();
            QVERIFY(next->isValid());
            QVERIFY(pointTo(m_path, next->slave()));
            m_happened.clear();
            takeLog();
            m_pty->write("BP1\n\r\nBP");            // in the middle of a message
            m_pty = std::move(next);                // hangs the old one up
            QTRY_VERIFY(!m_log->lines().isEmpty()); // "lost the device"
            takeLog();
            m_link->scannSerial();
            QTRY_VERIFY(scanUntilConnected());
            QCOMPARE(m_happened.mid(m_happened.size() - 2), QStringList({gone, zr}));
            m_happened.clear();
            m_pty->write("BP4\n\r\n");
            QTRY_COMPARE(m_happened, QStringList(QStringLiteral("button 4 down")));
        }
        takeLog();
    }

    void slotThatScansFromWithinAReportOfAVanishedDevice()
    {
        plug();
        connect(m_link.get(), &SerialProtocol::onButtonpress, this, [this](int, bool pressing) {
            if (pressing) {
                QFile::remove(m_path);
                m_pty->hangUp();
                m_link->scannSerial(); // closes the port inside its own readyRead()
            }
        });
        m_pty->write("BP1\n\r\nBP2\n\r\n");
        QTRY_COMPARE(m_happened.size(), 13);
        QCOMPARE(m_happened.at(1), QStringLiteral("button 1 down"));
        QCOMPARE(m_happened.last(), gone);
        QTest::qWait(50);
        QCOMPARE(takeLog(), QStringList(QStringLiteral("info: unplugged")));
    }

    void deviceThatFloodsLeavesTheEventLoopAlive()
    {
        plug();
        m_pty->write("BP1\n\r\n");
        int ticks = 0;
        QTimer writer;
        connect(&writer, &QTimer::timeout, this, [this] { m_pty->write(QByteArray(1000, '1') + "\n\r\n"); });
        writer.start(0);
        QTimer ticker;
        connect(&ticker, &QTimer::timeout, this, [&ticks] { ++ticks; });
        ticker.start(10);
        QTest::qWait(500);
        writer.stop();
        QVERIFY2(ticks >= 10, qPrintable(QString::number(ticks)));
        QVERIFY(m_link->isConnected());
    }

    void portInUseIsTriedUntilItIsFree()
    {
        QSerialPort other;
        other.setPortName(m_pty->slave());
        QVERIFY(other.open(QIODevice::ReadWrite));
        QVERIFY(QFile::link(m_pty->slave(), m_path));
        m_link->scannSerial();
        QVERIFY(!m_link->isConnected());
        const QStringList log = m_log->takeLines();
        QCOMPARE(log.size(), 1);
        QVERIFY(log.first().startsWith(QLatin1String("warning: failed to plugg ")));
        QCOMPARE(m_happened, QStringList());
        other.close();
        QTRY_VERIFY(scanUntilConnected());
        QCOMPARE(m_happened, QStringList(zr));
        takeLog();
    }

    void pathThatIsNoPortFailsQuietlyAndCostsLittle()
    {
        QVERIFY(QFile(m_path).open(QIODevice::WriteOnly));
        const double before = cpuMilliseconds();
        QTest::qWait(1200);
        const double used = cpuMilliseconds() - before;
        QVERIFY2(used < 50, qPrintable(QStringLiteral("%1 ms of CPU").arg(used)));
        QVERIFY(!m_link->isConnected());
        const QStringList log = takeLog();
        QCOMPARE(log.size(), 1);
        QVERIFY(log.first().startsWith(QLatin1String("warning: failed to plugg ")));
    }

    void systemsListAnswersAndHasAStamp()
    {
        QtPortLister lister;
        lister.availablePorts(); // whatever this machine has
        const std::optional<qint64> stamp = lister.changeStamp();
        QVERIFY(stamp.has_value());
    }

private:
    void record()
    {
        connect(m_link.get(), &SerialProtocol::portChange, this, [this](const QString &name) {
            m_happened.append(QStringLiteral("portChange ") +
                              (name.isNull() ? QStringLiteral("null") : name));
        });
        connect(m_link.get(), &SerialProtocol::onButtonpress, this, [this](int button, bool pressing) {
            m_happened.append(QStringLiteral("button %1 ").arg(button) +
                              (pressing ? QStringLiteral("down") : QStringLiteral("up")));
        });
        connect(m_link.get(), QOverload<char>::of(&SerialProtocol::onKnobevent), this,
                [this](char type) { m_happened.append(QStringLiteral("type ") + QLatin1Char(type)); });
        connect(m_link.get(), QOverload<int>::of(&SerialProtocol::onKnobevent), this,
                [this](int count) { m_happened.append(QStringLiteral("count %1").arg(count)); });
    }
    void plug()
    {
        QVERIFY(QFile::link(m_pty->slave(), m_path));
        QTRY_VERIFY(scanUntilConnected());
        QCOMPARE(takeLog(), QStringList(QStringLiteral("info: plugged")));
    }
    /// Terminals' numbers are used again at once, and the last user's lock of that name may be there for a
    /// moment longer. That is another test's business: the next scan gets the port.
    bool scanUntilConnected()
    {
        if (!m_link->isConnected()) {
            m_link->scannSerial();
        }
        return m_link->isConnected();
    }
    QStringList takeLog()
    {
        QStringList lines = m_log->takeLines();
        lines.removeAll(QStringLiteral("warning: failed to plugg Permission error while locking the device"));
        return lines;
    }
    void expectLoss()
    {
        const QStringList log = takeLog();
        QCOMPARE(log.size(), 2);
        QVERIFY2(isLoss(log.first()), qPrintable(log.first()));
        QCOMPARE(log.last(), QStringLiteral("info: unplugged"));
    }

    std::unique_ptr<LogCapture> m_log;
    QStringList m_happened;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    std::unique_ptr<Pty> m_pty;
    std::unique_ptr<SerialProtocol> m_link;
};

QTEST_GUILESS_MAIN(TestSerialLink)
#include "tst_SerialLink.moc"
