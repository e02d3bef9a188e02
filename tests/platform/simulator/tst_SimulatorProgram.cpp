#include "tests/support/main/Main.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

/// The simulator as a program: its faces without a window, its link and its status.
class tst_SimulatorProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aScriptIsPlayedWholeAndEndsWithStatusZero();
    void aMistakeInAScriptIsReportedBeforeAnythingIsSent();
    void linesOnStandardInputArePlayed();
    void aMistakeOnStandardInputEndsWithStatusTwo();
    void aSignalRemovesTheLink_data();
    void aSignalRemovesTheLink();
    void aSecondSimulatorIsTurnedAway();
    void afterAKillTheNextOneTakesOver();
    void theUsualPlaceIsTheRuntimeDirectory();
    void withoutARuntimeDirectoryAPrivateOneIsMade();
    void unplugAndPlugOnStandardInput();
    void aTcpPortInThePlaceOfTheLink();
    void wrongArgumentsEndWithStatusTwo();
    void helpAndVersionNeedNoDisplay();
    void withoutADisplayTheWindowIsRefused();
    void timestampsTellEachReport();

private:
    void start(QProcess &process, const QStringList &arguments);
    static QByteArray readUntilHangup(int descriptor);
    int open() const;
    QString write(const char *name, const QByteArray &text);

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_link;
    QProcessEnvironment m_environment;
};

void tst_SimulatorProgram::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_link = m_directory->filePath(QStringLiteral("device"));
    m_environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        m_environment.remove(QLatin1String(name));
    }
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_directory->path());
}

void tst_SimulatorProgram::start(QProcess &process, const QStringList &arguments)
{
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral(SIMULATOR_PROGRAM), arguments);
    QVERIFY(process.waitForStarted());
}

int tst_SimulatorProgram::open() const
{
    return ::open(QFile::encodeName(m_link).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
}

QByteArray tst_SimulatorProgram::readUntilHangup(int descriptor)
{
    QByteArray all;
    char bytes[4096];
    for (;;) {
        pollfd waiting = {descriptor, POLLIN, 0};
        if (::poll(&waiting, 1, 5000) <= 0) {
            break;
        }
        const ssize_t length = ::read(descriptor, bytes, sizeof bytes);
        if (length <= 0) {
            break;
        }
        all.append(bytes, static_cast<int>(length));
    }
    ::close(descriptor);
    return all;
}

QString tst_SimulatorProgram::write(const char *name, const QByteArray &text)
{
    QFile file(m_directory->filePath(QLatin1String(name)));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text);
    }
    return file.fileName();
}

void tst_SimulatorProgram::aScriptIsPlayedWholeAndEndsWithStatusZero()
{
    const QString script = write("script", "BP3\nwait 20\nBR3\nKND\nKNR\nKNU\n12\nraw 4b 4e 2b 0a 0d 0a\n");
    QProcess process;
    start(process, {QStringLiteral("--script"), script});
    m_link = m_directory->filePath(QStringLiteral("veltrix-simulator"));
    QTRY_VERIFY(QFileInfo::exists(m_link));
    QCOMPARE(readUntilHangup(open()),
             QByteArray("BP3\n\r\nBR3\n\r\nKND\n\r\nKNR\n\r\nKNU\n\r\n12\n\r\nKN+\n\r\n"));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(!QFileInfo(m_link).isSymLink());
    QVERIFY(!QFileInfo::exists(m_link + QStringLiteral(".lock")));
}

void tst_SimulatorProgram::aMistakeInAScriptIsReportedBeforeAnythingIsSent()
{
    const QString script = write("script", "BP3\n\nBR33\nwait x\n");
    QProcess process;
    start(process, {QStringLiteral("--script"), script});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    const QList<QByteArray> lines = process.readAllStandardError().trimmed().split('\n');
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[0].startsWith(script.toUtf8() + ":3: "), lines[0].constData());
    QVERIFY2(lines[1].startsWith(script.toUtf8() + ":4: "), lines[1].constData());
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
}

void tst_SimulatorProgram::linesOnStandardInputArePlayed()
{
    QProcess process;
    start(process, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link});
    QTRY_VERIFY(QFileInfo::exists(m_link));
    const int port = open();
    process.write("BP1\nwait 10\n");
    process.waitForBytesWritten();
    process.write("BR1");
    process.waitForBytesWritten();
    process.closeWriteChannel();
    QCOMPARE(readUntilHangup(port), QByteArray("BP1\n\r\nBR1\n\r\n"));
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput(), "plugged " + m_link.toUtf8() + "\nopened\nclosed\nunplugged\n");
}

void tst_SimulatorProgram::aMistakeOnStandardInputEndsWithStatusTwo()
{
    QProcess process;
    start(process, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link});
    process.write("# fine\nplug\nplog\n");
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QVERIFY(process.readAllStandardError().startsWith("stdin:3: "));
    QVERIFY(!QFileInfo(m_link).isSymLink());
}

void tst_SimulatorProgram::aSignalRemovesTheLink_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void tst_SimulatorProgram::aSignalRemovesTheLink()
{
    QFETCH(int, number);
    QProcess process;
    start(process, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link});
    QTRY_VERIFY(QFileInfo::exists(m_link));
    QCOMPARE(::kill(static_cast<pid_t>(process.processId()), number), 0);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + number);
    QVERIFY(!QFileInfo(m_link).isSymLink());
}

void tst_SimulatorProgram::aSecondSimulatorIsTurnedAway()
{
    QProcess first;
    start(first, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link});
    QTRY_VERIFY(QFileInfo::exists(m_link));
    const QString target = QFile::symLinkTarget(m_link);
    QProcess second;
    start(second, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link});
    QVERIFY(second.waitForFinished());
    QCOMPARE(second.exitCode(), 1);
    QVERIFY(second.readAllStandardError().contains("another simulator"));
    QCOMPARE(QFile::symLinkTarget(m_link), target);
    QProcess elsewhere;
    start(elsewhere, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link + QLatin1Char('2')});
    QTRY_VERIFY(QFileInfo::exists(m_link + QLatin1Char('2')));
    for (QProcess *process : {&first, &elsewhere}) {
        process->closeWriteChannel();
        QVERIFY(process->waitForFinished());
    }
}

void tst_SimulatorProgram::afterAKillTheNextOneTakesOver()
{
    QProcess first;
    start(first, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link});
    QTRY_VERIFY(QFileInfo::exists(m_link));
    first.kill();
    QVERIFY(first.waitForFinished());
    QVERIFY(QFileInfo(m_link).isSymLink());
    QProcess second;
    start(second, {QStringLiteral("--stdin"), QStringLiteral("--link"), m_link});
    QTRY_VERIFY(QFileInfo::exists(m_link)); // the dead one's link leads nowhere
    second.closeWriteChannel();
    QVERIFY(second.waitForFinished());
}

void tst_SimulatorProgram::theUsualPlaceIsTheRuntimeDirectory()
{
    QProcess process;
    start(process, {QStringLiteral("--stdin")});
    QTRY_VERIFY(QFileInfo::exists(m_directory->filePath(QStringLiteral("veltrix-simulator"))));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
}

void tst_SimulatorProgram::withoutARuntimeDirectoryAPrivateOneIsMade()
{
    m_environment.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    m_environment.insert(QStringLiteral("TMPDIR"), m_directory->path());
    QProcess process;
    start(process, {QStringLiteral("--stdin")});
    const QString directory = m_directory->filePath(QStringLiteral("veltrix-%1").arg(::geteuid()));
    QTRY_VERIFY(QFileInfo::exists(directory + QStringLiteral("/veltrix-simulator")));
    QCOMPARE(QFileInfo(directory).permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
             QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());

    QVERIFY(QFile::setPermissions(directory, QFileInfo(directory).permissions() | QFile::ReadOther));
    QProcess refused;
    start(refused, {QStringLiteral("--stdin")});
    QVERIFY(refused.waitForFinished());
    QCOMPARE(refused.exitCode(), 1);
}

void tst_SimulatorProgram::unplugAndPlugOnStandardInput()
{
    QProcess process;
    start(process,
          {QStringLiteral("--stdin"), QStringLiteral("--unplugged"), QStringLiteral("--link"), m_link});
    process.write("plug\n");
    QTRY_VERIFY(QFileInfo::exists(m_link));
    process.write("unplug\n");
    QTRY_VERIFY(!QFileInfo(m_link).isSymLink());
    process.write("plug\n");
    QTRY_VERIFY(QFileInfo::exists(m_link));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
}

void tst_SimulatorProgram::aTcpPortInThePlaceOfTheLink()
{
    QProcess process;
    start(process, {QStringLiteral("--stdin"), QStringLiteral("--listen"), QStringLiteral("0")});
    QTRY_VERIFY(process.canReadLine());
    const QByteArray plugged = process.readLine();
    QVERIFY2(plugged.startsWith("plugged tcp:127.0.0.1:"), plugged.constData());
    QTcpSocket socket;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost),
                         plugged.trimmed().split(':').last().toUShort());
    QVERIFY(socket.waitForConnected());
    process.write("BP3\nBR3\n");
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QTRY_COMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(socket.readAll(), QByteArray("BP3\n\r\nBR3\n\r\n"));
    QCOMPARE(process.readAllStandardOutput(), QByteArray("opened\nclosed\nunplugged\n"));
    QVERIFY(!QFileInfo::exists(m_directory->filePath(QStringLiteral("veltrix-simulator"))));
}

void tst_SimulatorProgram::wrongArgumentsEndWithStatusTwo()
{
    QProcess process;
    start(process, {QStringLiteral("--nonsense")});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QProcess noFile;
    start(noFile, {QStringLiteral("--script"), m_directory->filePath(QStringLiteral("missing"))});
    QVERIFY(noFile.waitForFinished());
    QCOMPARE(noFile.exitCode(), 2);
}

void tst_SimulatorProgram::helpAndVersionNeedNoDisplay()
{
    for (const char *option : {"--help", "--version"}) {
        QProcess process;
        start(process, {QLatin1String(option)});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        QVERIFY(process.readAllStandardOutput().contains("veltrix-simulator"));
        QCOMPARE(process.readAllStandardError(), QByteArray());
    }
}

void tst_SimulatorProgram::withoutADisplayTheWindowIsRefused()
{
    QProcess process;
    start(process, {});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("--stdin"));
}

void tst_SimulatorProgram::timestampsTellEachReport()
{
    QProcess process;
    start(process,
          {QStringLiteral("--stdin"), QStringLiteral("--timestamps"), QStringLiteral("--link"), m_link});
    QTRY_VERIFY(QFileInfo::exists(m_link));
    const int port = open();
    process.write("BP1\n12\n");
    process.waitForBytesWritten();
    process.closeWriteChannel();
    readUntilHangup(port);
    QVERIFY(process.waitForFinished());
    const QRegularExpression sent(QStringLiteral("^sent [0-9]+ (BP1|12)$"),
                                  QRegularExpression::MultilineOption);
    auto found = sent.globalMatch(QString::fromLatin1(process.readAllStandardOutput()));
    int count = 0;
    for (; found.hasNext(); found.next()) {
        ++count;
    }
    QCOMPARE(count, 2);
}

QTEST_GUILESS_MAIN(tst_SimulatorProgram)
#include "tst_SimulatorProgram.moc"
