#include "app/SingleApplication.h"
#include "tests/support/main/Main.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <sys/stat.h>
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
    void aForeignBlockUnderTheSameKeyStopsNoStart();
    void aForeignLockUnderTheSameKeyStopsNoStart();
    void aFolderThatTakesNoFilesStopsNoStart_data();
    void aFolderThatTakesNoFilesStopsNoStart();
    void aPathTooLongForASocketIsTold();
    void anEmptyStartLockIsClearedAtOnce();
    void aPrimaryThatStandsStillCountsAsReached();
    void ofFiftyStartsAtOnceExactlyOneSurvives();
    void burstsOfFiftyLeaveExactlyOneEach();

private:
    QProcessEnvironment environment(bool allowSecondary = false, const QString &runtimeDir = {}) const;
    Process start(const QStringList &arguments = {}, bool allowSecondary = false,
                  const QString &runtimeDir = {});
    static QString line(QProcess &process, int timeout = patience);
    static void end(QProcess &process);
    struct Left;
    Left killAPrimary();
    void burst();

    std::unique_ptr<QTemporaryDir> m_runtimeDir;
};

void tst_SingleApplication::init()
{
    m_runtimeDir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_runtimeDir->isValid());
}

QProcessEnvironment tst_SingleApplication::environment(bool allowSecondary, const QString &runtimeDir) const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                     runtimeDir.isEmpty() ? m_runtimeDir->path() : runtimeDir);
    if (allowSecondary) {
        variables.insert(QStringLiteral("ALLOW_SECONDARY"), QStringLiteral("1"));
    }
    return variables;
}

Process tst_SingleApplication::start(const QStringList &arguments, bool allowSecondary,
                                     const QString &runtimeDir)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment(allowSecondary, runtimeDir));
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

namespace
{

/// The last three bytes of the system's number for a block or a lock: of the file that the toolkit makes it
/// of.
key_t lowBytes(const QString &file)
{
    struct stat status {
    };
    return stat(QFile::encodeName(file).constData(), &status) == 0
               ? key_t(((status.st_dev & 0xff) << 16) | (status.st_ino & 0xffff))
               : -1;
}

/// The number under which the system has a block or a lock (@p kind is "shm" or "sem") for this file; -1 for
/// none.
key_t systemKey(const char *kind, const QString &file)
{
    QFile table(QStringLiteral("/proc/sysvipc/") + QLatin1String(kind));
    if (table.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : table.readAll().split('\n')) {
            const key_t key = line.simplified().split(' ').value(0).toInt();
            if ((key & 0xffffff) == lowBytes(file)) {
                return key;
            }
        }
    }
    return -1;
}

} // namespace

/// The files that a killed primary has left, and the numbers that they lead to.
struct tst_SingleApplication::Left {
    QString block;
    QString lock;
    key_t blockKey = -1;
    key_t lockKey = -1;
};

tst_SingleApplication::Left tst_SingleApplication::killAPrimary()
{
    Left left;
    const Process first = start();
    if (line(*first) == QLatin1String("primary")) {
        const QDir folder(m_runtimeDir->path());
        left.block = folder.filePath(folder.entryList({QStringLiteral("qipc_sharedmemory_*")}).value(0));
        left.lock = folder.filePath(folder.entryList({QStringLiteral("qipc_systemsem_*")}).value(0));
        left.blockKey = systemKey("shm", left.block);
        left.lockKey = systemKey("sem", left.lock);
    }
    first->kill();
    first->waitForFinished(5000);
    return left;
}

void tst_SingleApplication::aForeignBlockUnderTheSameKeyStopsNoStart()
{
    const Left left = killAPrimary();
    QVERIFY(left.blockKey != -1);
    const int old = shmget(left.blockKey, 0, 0);
    shmctl(old, IPC_RMID, nullptr);
    const int block = shmget(left.blockKey, 4096, IPC_CREAT | IPC_EXCL | 0666);
    QVERIFY(block >= 0);
    auto *bytes = static_cast<char *>(shmat(block, nullptr, 0));
    bytes[0] = 1; // "a primary runs"
    const Process second = start();
    const QString said = line(*second);
    const Process third = start();
    const bool refused = third->waitForFinished(5000);
    shmdt(bytes);
    shmctl(block, IPC_RMID, nullptr);
    QCOMPARE(said, QStringLiteral("primary"));
    QVERIFY(refused);
    QCOMPARE(line(*second), QStringLiteral("showUp"));
    end(*second);
}

void tst_SingleApplication::aForeignLockUnderTheSameKeyStopsNoStart()
{
    const Left left = killAPrimary();
    QVERIFY(left.lockKey != -1);
    semctl(semget(left.lockKey, 0, 0), 0, IPC_RMID);
    const int lock = semget(left.lockKey, 1, IPC_CREAT | IPC_EXCL | 0666);
    QVERIFY(lock >= 0);
    semctl(lock, 0, SETVAL, 0); // taken, for ever
    const Process second = start();
    const QString said = line(*second);
    const Process third = start();
    const bool refused = third->waitForFinished(5000);
    semctl(lock, 0, IPC_RMID);
    QCOMPARE(said, QStringLiteral("primary"));
    QVERIFY(refused);
    QCOMPARE(line(*second), QStringLiteral("showUp"));
    end(*second);
}

void tst_SingleApplication::aFolderThatTakesNoFilesStopsNoStart_data()
{
    QTest::addColumn<QString>("mountOptions");
    QTest::newRow("no inodes") << QStringLiteral("nr_inodes=1,mode=700");
    QTest::newRow("read-only") << QStringLiteral("ro,mode=700");
}

void tst_SingleApplication::aFolderThatTakesNoFilesStopsNoStart()
{
    QFETCH(QString, mountOptions);
    // Permissions do not stop root, so the folder is another file system, seen by this process alone.
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment());
    process->start(
        QStringLiteral("unshare"),
        {QStringLiteral("-rm"), QStringLiteral("sh"), QStringLiteral("-c"),
         QStringLiteral("mount -t tmpfs -o %1 none \"$XDG_RUNTIME_DIR\" && exec \"$0\"").arg(mountOptions),
         QStringLiteral(GUARDED)});
    QCOMPARE(line(*process), QStringLiteral("primary"));
    const QString problem = line(*process);
    QVERIFY2(problem.startsWith(QLatin1String("problem: a second copy would not be noticed")) &&
                 problem.contains(m_runtimeDir->path()),
             qPrintable(problem));
    end(*process);
}

void tst_SingleApplication::aPathTooLongForASocketIsTold()
{
    const QString folder = m_runtimeDir->filePath(QString(120, QLatin1Char('x')));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    const Process process = start({}, false, folder);
    QCOMPARE(line(*process), QStringLiteral("primary"));
    const QString problem = line(*process);
    QVERIFY2(problem.startsWith(QLatin1String("problem: a later start cannot bring the window back")) &&
                 problem.contains(folder),
             qPrintable(problem));
    end(*process);
}

void tst_SingleApplication::anEmptyStartLockIsClearedAtOnce()
{
    QFile lock(m_runtimeDir->filePath(QStringLiteral("VeltrixBrimwell Labs.lock")));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    lock.close();
    QElapsedTimer timer;
    timer.start();
    const Process process = start();
    QCOMPARE(line(*process, 20000), QStringLiteral("primary"));
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    end(*process);
}

void tst_SingleApplication::aPrimaryThatStandsStillCountsAsReached()
{
    const Process first = start();
    QCOMPARE(line(*first), QStringLiteral("primary"));
    ::kill(pid_t(first->processId()), SIGSTOP);
    constexpr int more = 40; // than wait to be taken at most
    for (int index = 0; index < more; ++index) {
        const Process next = start();
        QVERIFY(next->waitForFinished(5000));
        QCOMPARE(next->readAllStandardOutput(), QByteArray());
    }
    ::kill(pid_t(first->processId()), SIGCONT);
    QCOMPARE(line(*first), QStringLiteral("showUp"));
    end(*first);
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

void tst_SingleApplication::burstsOfFiftyLeaveExactlyOneEach()
{
#ifdef VELTRIX_ADDRESS_SANITIZER
    constexpr int bursts = 5; // a start takes four times as long
#else
    constexpr int bursts = 20;
#endif
    for (int round = 0; round < bursts && !QTest::currentTestFailed(); ++round) {
        burst();
    }
}

QTEST_GUILESS_MAIN(tst_SingleApplication)
#include "tst_SingleApplication.moc"
