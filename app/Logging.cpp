#include "app/Logging.h"

#include "app/LogFile.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <QMutex>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <utility>

namespace
{

constexpr int gatherTime = 1000; // ms that a line may wait for the file

constexpr int earlyLinesAtMost = 1000;

// Empty they take nothing at the start of the program, and what the file still gathers is written at its end.
QMutex fileMutex;              // clazy:exclude=non-pod-global-static (the MIDI driver's thread logs too)
std::unique_ptr<LogFile> file; // clazy:exclude=non-pod-global-static
QByteArrayList earlyLines;     // clazy:exclude=non-pod-global-static (until there is a file)
bool fileExpected = true;
bool failureTold = false;

// Under the mutex. Not through the log, which it is about.
void tellFailure()
{
    if (file->hasFailed() && !failureTold) {
        failureTold = true;
        std::fputs("veltrix.log cannot be written\n", stderr);
    }
}

void flushFile()
{
    const QMutexLocker locker(&fileMutex);
    if (file) {
        file->flush();
        tellFailure();
    }
}

void flushSoon()
{
    if (QCoreApplication::instance()) {
        // Across threads only a queued call may start a timer.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [] { QTimer::singleShot(gatherTime, QCoreApplication::instance(), flushFile); },
            Qt::QueuedConnection);
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
        if (file) {
            begins = file->append(line.toUtf8(), urgent);
            tellFailure();
        } else if (fileExpected && earlyLines.size() < earlyLinesAtMost) {
            earlyLines.append(line.toUtf8());
        }
    }
    if (begins) {
        flushSoon();
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
        addEvents();
    }
}

void Logging::addEvents()
{
    QLoggingCategory::setFilterRules(QStringLiteral("veltrix.*.debug=true"));
}

void Logging::addFile(const QString &directory)
{
    const QMutexLocker locker(&fileMutex);
    file = std::make_unique<LogFile>(directory + QStringLiteral("/veltrix.log"));
    bool begins = false;
    const QByteArrayList waiting = std::exchange(earlyLines, {});
    for (const QByteArray &line : waiting) {
        begins = file->append(line, false) || begins;
    }
    if (begins) {
        flushSoon();
    }
}

void Logging::closeFile()
{
    const QMutexLocker locker(&fileMutex);
    file.reset();
    fileExpected = false;
}
