#include "app/Logging.h"

#include "app/LogFile.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QMutex>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace
{

constexpr int gatherTime = 1000; // ms that a line may wait for the file

QMutex fileMutex;
std::unique_ptr<LogFile> file; // under the mutex: the MIDI driver's thread logs too

void flushFile()
{
    const QMutexLocker locker(&fileMutex);
    if (file) {
        file->flush();
    }
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QString line = qFormatLogMessage(type, context, text);
    const QByteArray local = line.toLocal8Bit() + '\n';
    std::fwrite(local.constData(), 1, static_cast<std::size_t>(local.size()), stderr);
    std::fflush(stderr);

    const bool urgent = type != QtDebugMsg && type != QtInfoMsg;
    bool begins = false;
    {
        const QMutexLocker locker(&fileMutex);
        begins = file && file->append(line.toUtf8(), urgent);
    }
    if (begins && qApp) {
        // Across threads only a queued call may start a timer.
        QMetaObject::invokeMethod(
            qApp, [] { QTimer::singleShot(gatherTime, qApp, flushFile); }, Qt::QueuedConnection);
    }
}

} // namespace

void Logging::start(bool verbose)
{
    qSetMessagePattern(
        QStringLiteral("%{time yyyy-MM-dd hh:mm:ss.zzz} "
                       "%{if-debug}debug%{endif}%{if-info}info%{endif}%{if-warning}warning%{endif}"
                       "%{if-critical}error%{endif}%{if-fatal}fatal%{endif} "
                       "%{category}: %{message}"));
    qInstallMessageHandler(handle);
    if (verbose) {
        QLoggingCategory::setFilterRules(QStringLiteral("veltrix.*.debug=true"));
    }
}

void Logging::addFile(const QString &directory)
{
    const QMutexLocker locker(&fileMutex);
    file = std::make_unique<LogFile>(directory + QStringLiteral("/veltrix.log"));
}

void Logging::closeFile()
{
    const QMutexLocker locker(&fileMutex);
    file.reset();
}
