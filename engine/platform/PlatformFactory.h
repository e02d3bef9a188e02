#pragma once

#include "engine/platform/Platform.h"

#include <QStringList>

/// Makes the platform from the backend that fits the session.
class PlatformFactory
{
    Q_DISABLE_COPY_MOVE(PlatformFactory)

public:
    /// Lets the backends prepare: what releases held input after a crash is started, and the toolkit is told
    /// to draw nowhere when no display answers. To be made first thing in main(), before the application
    /// object and any thread, file or connection exist.
    explicit PlatformFactory(const CrashTask &task = {});

    /// What the task's function will be called with; null when it will not be called.
    void *crashMemory() const { return m_crashMemory; }

    /// What create() takes: "auto" and the names of the backends that were built.
    static QStringList choices();

    /// Uses the backend named, or the first of those that fit the session that works ("auto"), and says in
    /// the log which one it is and why. Without a usable one it says so once, and the objects returned reach
    /// no desktop, so that the program runs on. Needs the application object.
    Platform create(const QString &choice = QStringLiteral("auto")) const;

private:
    void *m_crashMemory = nullptr;
};
