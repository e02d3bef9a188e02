#include "app/SingleApplication.h"

#include "app/GuardKeys.h"
#include "app/StartLock.h"
#include "engine/platform/Session.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QSharedMemory>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

constexpr int primaryRunning = 0; // byte: 1 while a primary holds the server
constexpr int secondaryCount = 1; // byte: admitted secondary instances now running
constexpr int blockSize = 2;

constexpr int wakeTimeout = 100; // ms
constexpr int keysAtMost = 10;   // that are tried when the blocks that they lead to are somebody else's

// Qt keeps shared blocks and sockets in the temporary directory, which all users share. While the guard
// works, the user's own runtime directory takes its place, so that different users never meet under the same
// key.
class UsersTemporaryDirectory
{
    Q_DISABLE_COPY_MOVE(UsersTemporaryDirectory)

public:
    UsersTemporaryDirectory()
        : m_wasSet(qEnvironmentVariableIsSet("TMPDIR"))
        , m_previous(qgetenv("TMPDIR"))
    {
        qputenv("TMPDIR", StartLock::folder().toLocal8Bit());
    }

    ~UsersTemporaryDirectory()
    {
        if (m_wasSet) {
            qputenv("TMPDIR", m_previous);
        } else {
            qunsetenv("TMPDIR");
        }
    }

private:
    bool m_wasSet;
    QByteArray m_previous;
};

// True when a primary of this user lives. One that has not taken its callers yet lets further ones wait.
bool wakePrimary(const QString &key)
{
    Session::letOthersComeToFront();
    QLocalSocket socket;
    socket.connectToServer(key, QIODevice::ReadWrite);
    socket.waitForConnected(wakeTimeout);
    const bool reached =
        socket.state() == QLocalSocket::ConnectedState || socket.state() == QLocalSocket::ConnectingState;
    socket.close();
    return reached;
}

QString guardProblem(const QString &folder, bool keysAreOthers)
{
    const QString reason =
        keysAreOthers
            ? QStringLiteral("%1 numbers in a row for its shared memory are somebody else's").arg(keysAtMost)
        : folder.isEmpty() ? QStringLiteral("the user has no runtime folder")
                           : QStringLiteral("the folder %1 cannot be used").arg(folder);
    return QStringLiteral("a second copy would not be noticed: ") + reason;
}

} // namespace

struct SingleApplication::Private {
    SingleApplication *owner;
    std::unique_ptr<QSharedMemory> memory;
    std::unique_ptr<QLocalServer> server; // null in a process that is not primary
    QString problem;

    // Only between lock() and unlock().
    uchar *bytes() const { return static_cast<uchar *>(memory->data()); }
};

SingleApplication::SingleApplication(int &argc, char **argv, bool allowSecondary, int (*onRefusal)())
    : QApplication(argc, argv)
    , d(std::make_unique<Private>())
{
    d->owner = this;
    const bool asked =
        std::any_of(argv, argv + argc, [](const char *arg) { return std::strcmp(arg, "--secondary") == 0; });
    const QString key = guardKey();
    const UsersTemporaryDirectory temporaryDirectory;
    {
        // One start at a time decides. The steps of a start alone let several primaries through when many
        // race.
        const StartLock lock(key);
        if (mayRun(key, asked && allowSecondary)) {
            return;
        }
        d.reset();
    }
    const int status = onRefusal == nullptr ? EXIT_SUCCESS : onRefusal();
    std::fflush(nullptr);
    // At once: nothing of the application has started yet that would want an orderly end.
    std::_Exit(status);
}

SingleApplication::~SingleApplication()
{
    releaseShare();
}

bool SingleApplication::isPrimary() const
{
    return d->server != nullptr;
}

QString SingleApplication::instanceKey(const QString &applicationName, const QString &organisationName)
{
    QString key = applicationName + organisationName;
    return key.remove(QRegularExpression(QStringLiteral("[^\\w\\-. ]")));
}

QString SingleApplication::guardKey()
{
    return instanceKey(applicationName(), organizationName()) + Session::userMark();
}

const QString &SingleApplication::problem() const
{
    return d->problem;
}

// Decides whether this process goes on running. A refusal counts only from a primary that was reached: the
// block that says that there is one may have been left by the system or belong to another user.
bool SingleApplication::mayRun(const QString &key, bool mayBeSecondary)
{
    // Without a folder of the user's own the guard would stand in one that all users share.
    const bool hasFolder = !StartLock::folder().isEmpty();
    GuardKeys keys(key);
    bool keysAreOthers = hasFolder;
    for (int tries = 0; hasFolder && tries <= keysAtMost; ++tries) {
        if (!keys.areAnothers() && keys.lockWorks() && claim(key, mayBeSecondary)) {
            return true;
        }
        const bool reached = wakePrimary(key);
        releaseShare();
        if (reached) {
            return false;
        }
        // Once more with the same key first: the primary may just have ended.
        if (tries > 0 && !keys.renew()) {
            keysAreOthers = false;
            break;
        }
    }
    d->problem = guardProblem(StartLock::folder(), keysAreOthers);
    if (hasFolder) {
        startServer(key);
    } else {
        d->server = std::make_unique<QLocalServer>();
    }
    return true;
}

// True when this process may go on running as far as the block says.
bool SingleApplication::claim(const QString &key, bool mayBeSecondary)
{
    // Twice: the system names a block after the inode of its key file. Where a crash left a block and the
    // file is gone, a new file with the same inode leads to that block, which can be cleared only now that
    // the file exists.
    for (int attempt = 0; attempt < 2; ++attempt) {
        // A block that a crashed process left goes away with the last one that lets go of it.
        QSharedMemory(key).attach(QSharedMemory::ReadWrite);
        d->memory = std::make_unique<QSharedMemory>(key);
        if (d->memory->create(blockSize, QSharedMemory::ReadWrite)) {
            startServer(key);
            d->memory->lock();
            d->bytes()[secondaryCount] = 0;
            d->bytes()[primaryRunning] = 1;
            d->memory->unlock();
            return true;
        }
    }
    if (!d->memory->attach(QSharedMemory::ReadWrite)) {
        return false;
    }
    d->memory->lock();
    bool goOn = false;
    if (d->bytes()[primaryRunning] == 0) {
        startServer(key);
        d->bytes()[primaryRunning] = 1;
        goOn = true;
    } else if (mayBeSecondary && d->bytes()[secondaryCount] < 1) {
        ++d->bytes()[secondaryCount];
        wakePrimary(key);
        goOn = true;
    }
    d->memory->unlock();
    return goOn;
}

void SingleApplication::startServer(const QString &key)
{
    QLocalServer::removeServer(key);
    d->server = std::make_unique<QLocalServer>();
    d->server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!d->server->listen(key) && d->problem.isEmpty()) {
        d->problem = QStringLiteral("a later start cannot bring the window back: no socket %1/%2 (%3)")
                         .arg(QDir::tempPath(), key, d->server->errorString());
    }
    connect(d->server.get(), &QLocalServer::newConnection, this,
            &SingleApplication::slotConnectionEstablished);
}

void SingleApplication::slotConnectionEstablished()
{
    const std::unique_ptr<QLocalSocket> socket(d->server->nextPendingConnection());
    if (socket) {
        socket->close();
    }
    Q_EMIT showUp();
}

void SingleApplication::releaseShare()
{
    if (!d || !d->memory) {
        return;
    }
    if (d->memory->isAttached() && d->memory->lock()) {
        if (d->server) {
            d->server->close();
            d->bytes()[primaryRunning] = 0;
        } else if (d->bytes()[secondaryCount] > 0) {
            --d->bytes()[secondaryCount];
        }
        d->memory->unlock();
    }
    d->memory.reset();
}
