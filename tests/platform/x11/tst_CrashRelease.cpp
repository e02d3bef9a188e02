#include "tests/support/main/Main.h"
#include "tests/support/xserver/KeyWindow.h"
#include "tests/support/xserver/XServer.h"
#include "tests/support/xserver/XTestDevices.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString procFile(qint64 process, const char *name)
{
    return QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name));
}

/// The fields of /proc/PID/stat behind the program's name: state, parent, group, session, terminal, ...
QList<QByteArray> status(qint64 process)
{
    const QByteArray line = readFile(procFile(process, "stat"));
    return line.mid(line.lastIndexOf(')') + 2).split(' ');
}

bool isAlive(qint64 process)
{
    const QByteArray state = status(process).value(0);
    return !state.isEmpty() && state != "Z" && state != "X";
}

qint64 findWatchdogOf(qint64 program)
{
    const QStringList processes =
        QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs);
    for (const QString &name : processes) {
        const qint64 process = name.toLongLong();
        if (status(process).value(1).toLongLong() == program &&
            readFile(procFile(process, "comm")).trimmed() == "veltrix-release") {
            return process;
        }
    }
    return 0;
}

/// The release process of a program, 0 for none. It gives itself its name a moment after the program has
/// begun.
qint64 watchdogOf(qint64 program)
{
    qint64 watchdog = 0;
    for (int i = 0; watchdog == 0 && i < 200; ++i) {
        watchdog = findWatchdogOf(program);
        QTest::qWait(watchdog == 0 ? 10 : 0);
    }
    return watchdog;
}

/// A figure of /proc/PID/status or smaps_rollup, for example "voluntary_ctxt_switches".
qint64 figure(qint64 process, const char *file, const char *name)
{
    const QRegularExpression pattern(QStringLiteral("^%1:\\s+(\\d+)").arg(QLatin1String(name)),
                                     QRegularExpression::MultilineOption);
    return pattern.match(QString::fromLatin1(readFile(procFile(process, file)))).captured(1).toLongLong();
}

/// The program under test, in a process group of its own.
class DesktopProgram : public QProcess
{
public:
    DesktopProgram(const XServer &server, const QStringList &arguments,
                   const QString &workingFolder = QString())
    {
        setProcessEnvironment(server.environment());
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        if (!workingFolder.isEmpty()) {
            setWorkingDirectory(workingFolder);
        }
        start(QStringLiteral(DESKTOP_PROGRAM), arguments);
    }
    ~DesktopProgram() override
    {
        if (state() != NotRunning) {
            kill();
            waitForFinished();
        }
    }

    bool waitForLine(const QByteArray &line)
    {
        while (!m_output.contains(line + '\n')) {
            if (!waitForReadyRead(5000)) {
                return false;
            }
            m_output += readAllStandardOutput();
        }
        return true;
    }

    void send(int signal) const { ::kill(pid_t(processId()), signal); }
    void sendToGroup(int signal) const { killpg(pid_t(processId()), signal); }

protected:
    void setupChildProcess() override
    {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        // A shell's background job ignores SIGINT, and so would the program.
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGHUP, SIG_DFL);
    }

private:
    QByteArray m_output;
};

} // namespace

class tst_CrashRelease : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void killReleasesKeysAndButtonWithin50Milliseconds();
    void killReleasesHeldModifiersAndGivesKeycodesBack();
    void endingWithoutLettingGoReleases();
    void normalEndTakesTheProcessAlongAtOnce();
    void processEndsAfterAKill();
    void processHoldsNothingOfTheProgram();
    void processSleepsAndIsSmall();
    void processSurvivesSignalsToTheGroup_data();
    void processSurvivesSignalsToTheGroup();
    void killedProcessLeavesTheProgramRunning();
    void killShowsTheHiddenPointer();
    void signalAsksToQuit_data();
    void signalAsksToQuit();

private:
    std::unique_ptr<XServer> m_server;
    std::unique_ptr<XTestDevices> m_devices;
};

void tst_CrashRelease::initTestCase()
{
    XServer::Options options;
    options.framebufferFile = true;
    m_server = std::make_unique<XServer>(options);
    QVERIFY2(m_server->isRunning(), qPrintable(m_server->error()));
    m_devices = std::make_unique<XTestDevices>(m_server->display());
    QVERIFY(m_devices->isReady());
}

void tst_CrashRelease::init()
{
    // The test before may have killed its program at the very end.
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_CrashRelease::killReleasesKeysAndButtonWithin50Milliseconds()
{
    QVector<double> times;
    for (int i = 0; i < 10; ++i) {
        DesktopProgram program(*m_server,
                               {QStringLiteral("hold"), QStringLiteral("17"), QStringLiteral("90")});
        QVERIFY(program.waitForLine("ready"));
        QCOMPARE(m_devices->heldKeycodes(), (QVector<int>{37, 52}));
        QVERIFY(m_devices->leftButtonHeld());
        QElapsedTimer clock;
        clock.start();
        program.send(SIGKILL);
        QVERIFY(m_devices->waitNothingHeld(5000));
        times << double(clock.nsecsElapsed()) / 1e6;
    }
    std::sort(times.begin(), times.end());
    qInfo("released after the kill: median %.1f ms, longest %.1f ms", times[times.size() / 2], times.last());
    QVERIFY2(times[times.size() / 2] < 50, "the median is the figure: a busy machine may be late once");
}

void tst_CrashRelease::killReleasesHeldModifiersAndGivesKeycodesBack()
{
    const QVector<int> spares = m_devices->keycodesOf(0);
    DesktopProgram program(*m_server, {QStringLiteral("hold"), QStringLiteral("16"), QStringLiteral("124")});
    QVERIFY(program.waitForLine("ready"));
    QCOMPARE(m_devices->heldKeycodes().size(), 2);
    QCOMPARE(m_devices->keycodesOf(0).size(), spares.size() - 1);
    program.send(SIGKILL);
    QVERIFY(m_devices->waitNothingHeld());
    QTRY_COMPARE(m_devices->keycodesOf(0), spares);
}

void tst_CrashRelease::endingWithoutLettingGoReleases()
{
    DesktopProgram program(*m_server, {QStringLiteral("leave"), QStringLiteral("65")});
    QVERIFY(program.waitForLine("ready"));
    QVERIFY(program.waitForFinished());
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_CrashRelease::normalEndTakesTheProcessAlongAtOnce()
{
    DesktopProgram program(*m_server, {QStringLiteral("idle")});
    QVERIFY(program.waitForLine("ready"));
    const qint64 watchdog = watchdogOf(program.processId());
    QVERIFY(watchdog != 0);
    program.send(SIGTERM);
    QVERIFY(program.waitForFinished());
    QVERIFY(!isAlive(watchdog));
}

void tst_CrashRelease::processEndsAfterAKill()
{
    DesktopProgram program(*m_server, {QStringLiteral("hold"), QStringLiteral("65")});
    QVERIFY(program.waitForLine("ready"));
    const qint64 watchdog = watchdogOf(program.processId());
    QVERIFY(watchdog != 0);
    program.send(SIGKILL);
    QTRY_VERIFY(!isAlive(watchdog));
    QVERIFY(m_devices->nothingHeld());
}

void tst_CrashRelease::processHoldsNothingOfTheProgram()
{
    const QTemporaryDir folder;
    DesktopProgram program(*m_server, {QStringLiteral("idle")}, folder.path());
    QVERIFY(program.waitForLine("ready"));
    const qint64 watchdog = watchdogOf(program.processId());
    QVERIFY(watchdog != 0);
    QStringList files;
    const QDir descriptors(procFile(watchdog, "fd"));
    for (const QString &name :
         descriptors.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)) {
        files << QFile::symLinkTarget(descriptors.filePath(name))
                     .section(QLatin1Char('/'), -1)
                     .section(QLatin1Char(':'), 0, 0);
    }
    std::sort(files.begin(), files.end());
    QCOMPARE(files.join(QLatin1Char(' ')), QStringLiteral("null null null pipe"));
    QCOMPARE(QFile::symLinkTarget(procFile(watchdog, "cwd")), QStringLiteral("/"));
    QCOMPARE(status(watchdog).value(3).toLongLong(), watchdog); // a session of its own
    QCOMPARE(status(watchdog).value(4), QByteArray("0"));       // no terminal
}

void tst_CrashRelease::processSleepsAndIsSmall()
{
    DesktopProgram program(*m_server, {QStringLiteral("hold"), QStringLiteral("65")});
    QVERIFY(program.waitForLine("ready"));
    const qint64 watchdog = watchdogOf(program.processId());
    const qint64 before = figure(watchdog, "status", "voluntary_ctxt_switches");
    QVERIFY(before > 0);
    QTest::qWait(300);
    QCOMPARE(figure(watchdog, "status", "voluntary_ctxt_switches"), before);
    const qint64 memory = figure(watchdog, "smaps_rollup", "Private_Dirty");
    qInfo("private memory of the release process: %lld kB", memory);
#ifndef VELTRIX_ADDRESS_SANITIZER
    QVERIFY(memory < 400);
#endif
}

void tst_CrashRelease::processSurvivesSignalsToTheGroup_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << int(SIGINT);
    QTest::newRow("SIGTERM") << int(SIGTERM);
    QTest::newRow("SIGHUP") << int(SIGHUP);
}

void tst_CrashRelease::processSurvivesSignalsToTheGroup()
{
    QFETCH(int, signal);
    DesktopProgram program(*m_server, {QStringLiteral("hold"), QStringLiteral("65")});
    QVERIFY(program.waitForLine("ready"));
    const qint64 watchdog = watchdogOf(program.processId());
    ::kill(pid_t(watchdog), signal);
    QTest::qWait(50);
    QVERIFY(isAlive(watchdog));
    program.send(SIGSTOP); // the group gets the signal, but the program does not end for it
    program.sendToGroup(signal);
    QTest::qWait(50);
    QVERIFY(isAlive(watchdog));
    program.send(SIGKILL);
    QVERIFY(m_devices->waitNothingHeld());
}

void tst_CrashRelease::killedProcessLeavesTheProgramRunning()
{
    DesktopProgram program(*m_server, {QStringLiteral("idle")});
    QVERIFY(program.waitForLine("ready"));
    ::kill(pid_t(watchdogOf(program.processId())), SIGKILL);
    QTest::qWait(50);
    QVERIFY(isAlive(program.processId()));
    program.send(SIGTERM);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

void tst_CrashRelease::killShowsTheHiddenPointer()
{
    KeyWindow window(m_server->display());
    window.useWhitePointer();
    m_devices->moveXTestPointerTo(50, 50);
    QTRY_COMPARE(m_server->pixel(55, 55), 0xffffffU);
    DesktopProgram program(*m_server, {QStringLiteral("hide")});
    QVERIFY(program.waitForLine("ready"));
    QTRY_COMPARE(m_server->pixel(55, 55), 0U);
    program.send(SIGKILL);
    QTRY_COMPARE(m_server->pixel(55, 55), 0xffffffU);
}

void tst_CrashRelease::signalAsksToQuit_data()
{
    processSurvivesSignalsToTheGroup_data();
}

void tst_CrashRelease::signalAsksToQuit()
{
    QFETCH(int, signal);
    DesktopProgram program(*m_server, {QStringLiteral("idle")});
    QVERIFY(program.waitForLine("ready"));
    program.send(signal);
    QVERIFY(program.waitForLine("quit"));
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

QTEST_GUILESS_MAIN(tst_CrashRelease)

#include "tst_CrashRelease.moc"
