#include "engine/platform/linux/PathWatch.h"

#include <QFile>
#include <QFileInfo>

#include <sys/inotify.h>
#include <unistd.h>

PathWatch::PathWatch(const QString &path, std::function<void()> changed)
    : m_name(QFile::encodeName(QFileInfo(path).fileName()))
    , m_changed(std::move(changed))
    , m_inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    inotify_add_watch(m_inotify, QFile::encodeName(QFileInfo(path).path()).constData(),
                      IN_ATTRIB | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO);
    m_notifier = std::make_unique<QSocketNotifier>(m_inotify, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
}

PathWatch::~PathWatch()
{
    m_notifier.reset();
    close(m_inotify);
}

void PathWatch::read()
{
    alignas(inotify_event) char bytes[4096];
    bool meant = false;
    for (ssize_t length = 0; (length = ::read(m_inotify, bytes, sizeof bytes)) > 0;) {
        for (const char *at = bytes; at < bytes + length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(at);
            // News that were too many to keep may have been about the file.
            meant = meant || (event->mask & IN_Q_OVERFLOW) != 0 || (event->len > 0 && m_name == event->name);
            at += sizeof(inotify_event) + event->len;
        }
    }
    if (meant) {
        m_changed();
    }
}
