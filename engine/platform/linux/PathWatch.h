#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <memory>

/// Calls a function from the event loop when a file comes, goes, or is given other rights. What is written to
/// the file is none of its business, unlike QFileSystemWatcher's, which would wake up for every event that is
/// sent through a device's file.
class PathWatch
{
    Q_DISABLE_COPY_MOVE(PathWatch)

public:
    /// The file's folder has to exist; without it nothing is ever called.
    PathWatch(const QString &path, std::function<void()> changed);
    ~PathWatch();

private:
    void read();

    QByteArray m_name; // within its folder
    std::function<void()> m_changed;
    int m_inotify;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
