#pragma once

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

/// What the fuzzers of files have in common.
namespace fuzz
{

/// Ends the run, so that the input is kept, unless @p condition holds.
inline void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "violated: %s\n", what);
        std::abort();
    }
}

/// A folder that goes with the process: in memory, where flushing a file to the disk costs nothing.
inline QString folder()
{
    static const QTemporaryDir directory(QFileInfo::exists(QStringLiteral("/dev/shm"))
                                             ? QStringLiteral("/dev/shm/veltrix-fuzz-XXXXXX")
                                             : QString());
    return directory.path();
}

inline void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the input can be written");
}

inline QByteArray content(const QString &path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the file is there");
    return file.readAll();
}

} // namespace fuzz
