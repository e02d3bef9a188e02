// Preloaded into the program, tells whoever has made the socket how many objects of the toolkit there are,
// and how many timers they have running. For the toolkit's own hooks see its qhooks_p.h, which is not
// installed everywhere.

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <unordered_set>

extern quintptr Q_CORE_EXPORT qtHookData[];

namespace
{

enum Hook { AddObject = 3, RemoveObject = 4, Startup = 5 };

// Never destroyed: objects go until the very end.
auto &mutex = *new std::mutex;
auto &objects = *new std::unordered_set<QObject *>;

void added(QObject *object)
{
    const std::lock_guard<std::mutex> lock(mutex);
    objects.insert(object);
}

void removed(QObject *object)
{
    const std::lock_guard<std::mutex> lock(mutex);
    objects.erase(object);
}

void answer(int connection)
{
    char question = 0;
    if (::read(connection, &question, 1) != 1) {
        return;
    }
    int timers = 0;
    int count = 0;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        for (QObject *object : objects) {
            ++count;
            if (object->thread() == QThread::currentThread()) {
                timers += QAbstractEventDispatcher::instance()->registeredTimers(object).size();
            }
        }
    }
    char line[64];
    const int length = std::snprintf(line, sizeof line, "%d %d\n", count, timers);
    if (::write(connection, line, static_cast<std::size_t>(length)) != length) {
        std::perror("object counts");
    }
}

void started()
{
    const char *path = std::getenv("OBJECT_COUNTS_SOCKET");
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path ? path : "", sizeof address.sun_path - 1);
    const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        std::perror("object counts");
        return;
    }
    auto *notifier = new QSocketNotifier(connection, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [connection] { answer(connection); });
}

const bool hooked = [] {
    qtHookData[AddObject] = reinterpret_cast<quintptr>(&added);
    qtHookData[RemoveObject] = reinterpret_cast<quintptr>(&removed);
    qtHookData[Startup] = reinterpret_cast<quintptr>(&started);
    return true;
}();

} // namespace
