#include "tests/support/main/Main.h"
#include "tools/simulator/posix/PrivateDirectory.h"
#include "tools/simulator/posix/PtyPort.h"
#include "tools/simulator/posix/PublishedLink.h"

#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

using simulator::PtyPort;
using simulator::PublishedLink;

class tst_PtyPort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void bytesArriveUnchangedThroughTheLink();
    void theTerminalIsForThisUserOnly();
    void openingAndClosingIsNoticed();
    void aTerminalOfTheSamePathInAnotherFileSystemIsNotOurs();
    void whatIsSentWhileNobodyListensIsLost();
    void aProgramKilledInExclusiveModeDoesNotBlockTheNext();
    void aStalledProgramLosesNothingUntilTheLimit();
    void whatAStalledProgramMissedIsToldWhenItReadsAgain();
    void whatTheProgramWritesIsTold();
    void pullingTheCableHangsUpAndRemovesTheLink();
    void pluggingAnewMakesANewPort();
    void theLinkOfALivingSimulatorIsNotTaken();
    void theLinkOfADeadSimulatorIsReplaced();
    void anythingElseAtTheLinksPlaceIsLeftAlone();
    void aForeignLinkIsNotRemovedAtTheEnd();
    void aDirectoryThatOthersMayEnterIsNotUsed();

private:
    int open() const
    {
        return ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    }
    static QByteArray readAll(int descriptor);

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;
    std::unique_ptr<PtyPort> m_port;
};

void tst_PtyPort::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath(QStringLiteral("device"));
    m_port = std::make_unique<PtyPort>(m_path);
    QVERIFY(m_port->claim());
    QVERIFY2(m_port->plug(), qPrintable(m_port->errorString()));
}

void tst_PtyPort::cleanup()
{
    m_port.reset();
}

QByteArray tst_PtyPort::readAll(int descriptor)
{
    QByteArray all;
    char bytes[4096];
    pollfd waiting = {descriptor, POLLIN, 0};
    while (::poll(&waiting, 1, 50) > 0) {
        const ssize_t length = ::read(descriptor, bytes, sizeof bytes);
        if (length <= 0) {
            break;
        }
        all.append(bytes, static_cast<int>(length));
    }
    return all;
}

void tst_PtyPort::bytesArriveUnchangedThroughTheLink()
{
    const int program = open();
    QVERIFY(program >= 0);
    QByteArray every;
    for (int byte = 0; byte < 256; ++byte) {
        every.append(static_cast<char>(byte));
    }
    m_port->send("BP3\n\r\n");
    m_port->send(every);
    QCOMPARE(readAll(program), "BP3\n\r\n" + every);
    ::close(program);
}

void tst_PtyPort::theTerminalIsForThisUserOnly()
{
    struct stat status = {};
    QCOMPARE(::stat(QFile::encodeName(m_path).constData(), &status), 0);
    QCOMPARE(status.st_mode & 0777U, 0600U);
    QCOMPARE(status.st_uid, ::geteuid());
}

void tst_PtyPort::openingAndClosingIsNoticed()
{
    QSignalSpy opened(m_port.get(), &PtyPort::openedChanged);
    QVERIFY(!m_port->isOpened());
    const int program = open();
    QTRY_COMPARE(opened.count(), 1);
    QVERIFY(m_port->isOpened());
    const int another = open();
    ::close(another);
    QTest::qWait(50);
    QCOMPARE(opened.count(), 1);
    ::close(program);
    QTRY_COMPARE(opened.count(), 2);
    QVERIFY(!m_port->isOpened());
}

void tst_PtyPort::aTerminalOfTheSamePathInAnotherFileSystemIsNotOurs()
{
    QProcess container;
    container.start(QStringLiteral("unshare"), {QStringLiteral("--map-root-user"), QStringLiteral("--mount"),
                                                QStringLiteral(HOLD_TERMINAL), m_port->slavePath()});
    while (!container.canReadLine()) {
        QVERIFY2(container.waitForReadyRead(20000), container.readAllStandardError().constData());
    }
    QCOMPARE(container.readLine(), QByteArray("ready\n"));

    QSignalSpy opened(m_port.get(), &PtyPort::openedChanged);
    const int program = open();
    QTRY_COMPARE(opened.count(), 1);
    ::close(program);
    QTRY_VERIFY(!m_port->isOpened());
    container.closeWriteChannel();
    QVERIFY(container.waitForFinished(5000));
}

void tst_PtyPort::whatIsSentWhileNobodyListensIsLost()
{
    m_port->send("BP1\n\r\n");
    const int program = open();
    m_port->send("BP2\n\r\n");
    QCOMPARE(readAll(program), QByteArray("BP2\n\r\n"));
    ::close(program);
}

void tst_PtyPort::aProgramKilledInExclusiveModeDoesNotBlockTheNext()
{
    const int program = open();
    QCOMPARE(::ioctl(program, TIOCEXCL), 0);
    termios settings = {};
    ::tcgetattr(program, &settings);
    settings.c_lflag |= ECHO | ICANON;
    ::tcsetattr(program, TCSANOW, &settings);
    QTRY_VERIFY(m_port->isOpened());
    ::close(program);
    QTRY_VERIFY(!m_port->isOpened());
    int exclusive = 1;
    const int next = open();
    QVERIFY(next >= 0);
    QCOMPARE(::ioctl(next, TIOCGEXCL, &exclusive), 0);
    QCOMPARE(exclusive, 0);
    ::tcgetattr(next, &settings);
    QCOMPARE(settings.c_lflag & (ECHO | ICANON), 0U);
    ::close(next);
}

void tst_PtyPort::aStalledProgramLosesNothingUntilTheLimit()
{
    QSignalSpy overrun(m_port.get(), &PtyPort::overrun);
    const int program = open();
    QByteArray sent;
    for (int i = 0; i < 5000; ++i) {
        const QByteArray message = QByteArray::number(i) + "\n\r\n";
        m_port->send(message);
        sent += message;
    }
    QVERIFY(!m_port->isDelivered());
    QByteArray received;
    QTRY_VERIFY_WITH_TIMEOUT((received += readAll(program)).size() >= sent.size(), 10000);
    QCOMPARE(received, sent);
    QVERIFY(m_port->isDelivered());
    QCOMPARE(overrun.count(), 0);
    for (int i = 0; i < 40; ++i) {
        m_port->send(QByteArray(4096, 'x'));
    }
    QCOMPARE(overrun.count(), 1);
    ::close(program);
}

void tst_PtyPort::whatAStalledProgramMissedIsToldWhenItReadsAgain()
{
    QSignalSpy overrun(m_port.get(), &PtyPort::overrun);
    QSignalSpy ended(m_port.get(), &PtyPort::overrunEnded);
    const int program = open();
    constexpr int pieces = 40;
    constexpr int size = 4096;
    for (int i = 0; i < pieces; ++i) {
        m_port->send(QByteArray(size, 'x'));
    }
    QCOMPARE(overrun.count(), 1);
    QCOMPARE(ended.count(), 0);
    int received = 0;
    QTRY_VERIFY_WITH_TIMEOUT((received += readAll(program).size(), ended.count() == 1), 10000);
    received += readAll(program).size();
    QCOMPARE(received + ended.first().first().toInt(), pieces * size);
    m_port->send("again");
    QByteArray after;
    QTRY_COMPARE(after += readAll(program), QByteArray("again"));
    QCOMPARE(overrun.count(), 1);
    ::close(program);
}

void tst_PtyPort::whatTheProgramWritesIsTold()
{
    QSignalSpy received(m_port.get(), &PtyPort::received);
    const int program = open();
    QCOMPARE(::write(program, "AB\n", 3), ssize_t{3});
    QTRY_COMPARE(received.count(), 1);
    QCOMPARE(received.first().first().toByteArray(), QByteArray("AB\n"));
    ::close(program);
}

void tst_PtyPort::pullingTheCableHangsUpAndRemovesTheLink()
{
    const int program = open();
    m_port->unplug();
    pollfd waiting = {program, POLLIN, 0};
    QCOMPARE(::poll(&waiting, 1, 1000), 1);
    QVERIFY((waiting.revents & POLLHUP) != 0);
    QVERIFY(!QFileInfo(m_path).isSymLink());
    QVERIFY(!m_port->isPlugged());
    ::close(program);
}

void tst_PtyPort::pluggingAnewMakesANewPort()
{
    const int held = open();
    m_port->unplug();
    QVERIFY(m_port->plug());
    const int program = open();
    m_port->send("BP1\n\r\n");
    QCOMPARE(readAll(program), QByteArray("BP1\n\r\n"));
    ::close(program);
    ::close(held);
}

void tst_PtyPort::theLinkOfALivingSimulatorIsNotTaken()
{
    PublishedLink other(m_path);
    QVERIFY(!other.claim());
    QVERIFY(other.errorString().contains(QString::number(::getpid())));
    // The name stays taken while the cable is out.
    m_port->unplug();
    QVERIFY(!other.claim());
    m_port.reset();
    QVERIFY(other.claim());
}

void tst_PtyPort::theLinkOfADeadSimulatorIsReplaced()
{
    const QString path = m_directory->filePath(QStringLiteral("other"));
    QVERIFY(QFile::link(QStringLiteral("/dev/pts/99999"), path));
    PublishedLink link(path);
    QVERIFY2(link.claim(), qPrintable(link.errorString()));
    QVERIFY(link.publish(QStringLiteral("/dev/pts/1")));
    QCOMPARE(QFile::symLinkTarget(path), QStringLiteral("/dev/pts/1"));
    link.withdraw();
    QVERIFY(!QFileInfo(path).isSymLink());
}

void tst_PtyPort::anythingElseAtTheLinksPlaceIsLeftAlone()
{
    const QString path = m_directory->filePath(QStringLiteral("other"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    QVERIFY(!PublishedLink(path).claim());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("precious"));
    QVERIFY(file.remove());
    QVERIFY(QFile::link(QStringLiteral("/etc/hostname"), path));
    QVERIFY(!PublishedLink(path).claim());
    QCOMPARE(QFile::symLinkTarget(path), QStringLiteral("/etc/hostname"));
}

void tst_PtyPort::aForeignLinkIsNotRemovedAtTheEnd()
{
    QVERIFY(QFile::remove(m_path));
    QVERIFY(QFile::link(QStringLiteral("/etc/hostname"), m_path));
    m_port->unplug();
    QCOMPARE(QFile::symLinkTarget(m_path), QStringLiteral("/etc/hostname"));
}

void tst_PtyPort::aDirectoryThatOthersMayEnterIsNotUsed()
{
    const QString path = m_directory->path();
    QVERIFY(simulator::isPrivateDirectory(path));
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0750), 0);
    QVERIFY(!simulator::isPrivateDirectory(path));
    QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0700), 0);
    const QString link = m_directory->filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(path, link));
    QVERIFY(!simulator::isPrivateDirectory(link));
    QVERIFY(!simulator::isPrivateDirectory(m_directory->filePath(QStringLiteral("nothing"))));
}

QTEST_GUILESS_MAIN(tst_PtyPort)
#include "tst_PtyPort.moc"
