#include "app/SingleApplication.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <vector>

// What comes is waited for as long as a busy machine may take; what must not come, for a moment.
constexpr int patience = 60000;
constexpr int moment = 300;

using Process = std::unique_ptr<QProcess>;

class tst_SingleApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keyHasNoBraces();
    void keyKeepsWordsDotsDashesAndBlanks();
    void secondStartEndsWithStatusZeroAndWakesTheFirstOnce();
    void secondaryIsRefusedAsItIsNotAllowed();
    void secondaryIsAdmittedWhereItIsAllowed();
    void startAfterANormalEndBecomesPrimary();
    void startAfterACrashBecomesPrimary();
    void startAfterACrashAndAnEmptiedRuntimeDirectoryBecomesPrimary();
    void startWhileASecondaryStillRunsBecomesPrimary();
    void twoUsersDoNotMeet();
    void ofFiftyStartsAtOnceExactlyOneSurvives();
    void twentyBurstsOfFiftyLeaveExactlyOneEach();

private:
    Process start(const QStringList &arguments = {}, bool allowSecondary = false,
                  const QString &runtimeDir = {});
    static QString line(QProcess &process, int timeout = patience);
    static void end(QProcess &process);
    void burst();

    std::unique_ptr<QTemporaryDir> m_runtimeDir;
};

void tst_SingleApplication::init()
{
    m_runtimeDir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_runtimeDir->isValid());
}

Process tst_SingleApplication::start(const QStringList &arguments, bool allowSecondary,
                                     const QString &runtimeDir)
{
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                       runtimeDir.isEmpty() ? m_runtimeDir->path() : runtimeDir);
    if (allowSecondary) {
        environment.insert(QStringLiteral("ALLOW_SECONDARY"), QStringLiteral("1"));
    }
    process->setProcessEnvironment(environment);
    process->start(QStringLiteral(GUARDED), arguments);
    return process;
}

QString tst_SingleApplication::line(QProcess &process, int timeout)
{
    const QDeadlineTimer deadline(timeout);
    while (!process.canReadLine() && !deadline.hasExpired() &&
           (process.waitForReadyRead(50) || process.state() != QProcess::NotRunning)) {
    }
    return QString::fromLatin1(process.readLine()).trimmed();
}

void tst_SingleApplication::end(QProcess &process)
{
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.exitCode(), 0);
}

void tst_SingleApplication::keyHasNoBraces()
{
    QCOMPARE(SingleApplication::instanceKey(QStringLiteral("{Veltrix}"), QStringLiteral("{Brimwell Labs}")),
             QStringLiteral("VeltrixBrimwell Labs"));
}

void tst_SingleApplication::keyKeepsWordsDotsDashesAndBlanks()
{
    QCOMPARE(SingleApplication::instanceKey(QStringLiteral("a-b.c d_9"), QStringLiteral("!/\\(e)")),
             QStringLiteral("a-b.c d_9e"));
}

void tst_SingleApplication::secondStartEndsWithStatusZeroAndWakesTheFirstOnce()
{
    const Process first = start();
    QCOMPARE(line(*first), QStringLiteral("primary"));
    const Process second = start();
    QVERIFY(second->waitForFinished(patience));
    QCOMPARE(second->exitStatus(), QProcess::NormalExit);
    QCOMPARE(second->exitCode(), 0);
    QCOMPARE(second->readAll(), QByteArray());
    QCOMPARE(line(*first), QStringLiteral("showUp"));
    QCOMPARE(line(*first, moment), QString());
    end(*first);
}

void tst_SingleApplication::secondaryIsRefusedAsItIsNotAllowed()
{
    const Process first = start();
    QCOMPARE(line(*first), QStringLiteral("primary"));
    const Process second = start({QStringLiteral("--secondary")});
    QVERIFY(second->waitForFinished(patience));
    QCOMPARE(second->exitCode(), 0);
    QCOMPARE(line(*first), QStringLiteral("showUp"));
    end(*first);
}

void tst_SingleApplication::secondaryIsAdmittedWhereItIsAllowed()
{
    const Process first = start({}, true);
    QCOMPARE(line(*first), QStringLiteral("primary"));
    const Process second = start({QStringLiteral("--secondary")}, true);
    QCOMPARE(line(*second), QStringLiteral("secondary"));
    QCOMPARE(line(*first), QStringLiteral("showUp"));

    const Process third = start({QStringLiteral("--secondary")}, true);
    QVERIFY(third->waitForFinished(patience)); // one is enough
    QCOMPARE(third->exitCode(), 0);
    end(*second);
    end(*first);
}

void tst_SingleApplication::startAfterANormalEndBecomesPrimary()
{
    for (int round = 0; round < 3; ++round) {
        const Process process = start();
        QCOMPARE(line(*process), QStringLiteral("primary"));
        end(*process);
    }
}

void tst_SingleApplication::startAfterACrashBecomesPrimary()
{
    const Process first = start();
    QCOMPARE(line(*first), QStringLiteral("primary"));
    first->kill();
    QVERIFY(first->waitForFinished(patience));
    const Process second = start();
    QCOMPARE(line(*second), QStringLiteral("primary"));
    const Process third = start();
    QVERIFY(third->waitForFinished(patience));
    QCOMPARE(line(*second), QStringLiteral("showUp"));
    end(*second);
}

void tst_SingleApplication::startAfterACrashAndAnEmptiedRuntimeDirectoryBecomesPrimary()
{
    // The inode of a file that is gone is soon that of a new one.
    for (int round = 0; round < 20; ++round) {
        const Process process = start();
        QCOMPARE(line(*process), QStringLiteral("primary"));
        process->kill();
        QVERIFY(process->waitForFinished(patience));
        for (const QFileInfo &file :
             QDir(m_runtimeDir->path()).entryInfoList(QDir::Files | QDir::System | QDir::Hidden)) {
            QFile::remove(file.filePath());
        }
    }
    const Process last = start();
    QCOMPARE(line(*last), QStringLiteral("primary"));
    end(*last);
}

void tst_SingleApplication::startWhileASecondaryStillRunsBecomesPrimary()
{
    const Process first = start({}, true);
    QCOMPARE(line(*first), QStringLiteral("primary"));
    const Process second = start({QStringLiteral("--secondary")}, true);
    QCOMPARE(line(*second), QStringLiteral("secondary"));
    end(*first);
    const Process third = start();
    QCOMPARE(line(*third), QStringLiteral("primary"));
    end(*third);
    end(*second);
}

void tst_SingleApplication::twoUsersDoNotMeet()
{
    const QTemporaryDir other;
    const Process mine = start();
    QCOMPARE(line(*mine), QStringLiteral("primary"));
    const Process theirs = start({}, false, other.path());
    QCOMPARE(line(*theirs), QStringLiteral("primary"));
    end(*theirs);
    end(*mine);
}

void tst_SingleApplication::burst()
{
    constexpr int starts = 50;
    std::vector<Process> processes;
    for (int index = 0; index < starts; ++index) {
        processes.push_back(start());
    }
    QProcess *primary = nullptr;
    for (const Process &process : processes) {
        const QString said = line(*process);
        if (said == QLatin1String("primary")) {
            QVERIFY2(!primary, "two primaries");
            primary = process.get();
        } else {
            QCOMPARE(said, QString());
            QVERIFY(process->state() == QProcess::NotRunning || process->waitForFinished(patience));
            QCOMPARE(process->exitCode(), 0);
        }
    }
    QVERIFY(primary);
    int wakes = 0;
    while (wakes < starts - 1 && line(*primary) == QLatin1String("showUp")) {
        ++wakes;
    }
    QCOMPARE(wakes, starts - 1);
    end(*primary);
}

void tst_SingleApplication::ofFiftyStartsAtOnceExactlyOneSurvives()
{
    burst();
}

void tst_SingleApplication::twentyBurstsOfFiftyLeaveExactlyOneEach()
{
    for (int round = 0; round < 20 && !QTest::currentTestFailed(); ++round) {
        burst();
    }
}

QTEST_GUILESS_MAIN(tst_SingleApplication)
#include "tst_SingleApplication.moc"
