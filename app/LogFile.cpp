#include "app/LogFile.h"

#include <QMutexLocker>

LogFile::LogFile(const QString &path)
    : m_file(path)
{
    if (m_file.open(QIODevice::Append | QIODevice::Unbuffered)) {
        m_size = m_file.size();
    }
    m_failed = !m_file.isOpen();
}

LogFile::~LogFile()
{
    flush();
}

bool LogFile::append(const QByteArray &line, bool urgent)
{
    const QMutexLocker locker(&m_mutex);
    if (!m_file.isOpen()) {
        return false;
    }
    const bool first = m_waiting.isEmpty();
    m_waiting += line;
    m_waiting += '\n';
    if (urgent || m_waiting.size() >= gatherLimit) {
        write();
        return false;
    }
    return first;
}

void LogFile::flush()
{
    const QMutexLocker locker(&m_mutex);
    write();
}

void LogFile::write()
{
    if (m_waiting.isEmpty() || !m_file.isOpen()) {
        return;
    }
    if (m_size > 0 && m_size + m_waiting.size() > sizeLimit) {
        rotate();
    }
    const qint64 written = m_file.write(m_waiting);
    m_failed = m_failed || written < m_waiting.size();
    m_size += qMax<qint64>(0, written);
    m_waiting.clear();
}

void LogFile::rotate()
{
    const QString path = m_file.fileName();
    const auto old = [&path](int number) {
        return QStringLiteral("%1.%2").arg(path, QString::number(number));
    };
    m_file.close();
    QFile::remove(old(kept));
    for (int number = kept; number > 1; --number) {
        QFile::rename(old(number - 1), old(number));
    }
    QFile::rename(path, old(1));
    m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
    m_size = m_file.size();
}
