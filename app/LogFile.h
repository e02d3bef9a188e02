#pragma once

#include <QByteArray>
#include <QFile>
#include <QMutex>
#include <QString>

/// A text file that lines are appended to, and that moves aside when it is full: NAME becomes NAME.1, NAME.1
/// becomes NAME.2 and so on, up to NAME.3.
///
/// Lines are gathered and written together: no line costs a disk write of its own, unless it is urgent. A
/// file that cannot be written is done without. May be used from any thread.
class LogFile
{
    Q_DISABLE_COPY_MOVE(LogFile)

public:
    static constexpr qint64 sizeLimit = qint64{1024} * 1024; ///< bytes
    static constexpr int kept = 3;                           ///< old files beside the current one
    static constexpr int gatherLimit = 16 * 1024;            ///< bytes that wait at most

    explicit LogFile(const QString &path);
    ~LogFile();

    /// @p line comes without its end of line. An urgent one is written at once, with all that waits before
    /// it. Returns true when lines begin to wait: somebody is to call flush() before long.
    bool append(const QByteArray &line, bool urgent);
    void flush();

    /// Whether lines were lost, since the file cannot be opened or written.
    bool hasFailed() const { return m_failed; }

private:
    void write();
    void rotate();

    QMutex m_mutex;
    QFile m_file;
    QByteArray m_waiting;
    qint64 m_size = 0;
    bool m_failed = false;
};
