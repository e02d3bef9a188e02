#include "mapping/MappingFile.h"

#include "mapping/DiskSync.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace
{

MappingFile::ReadResult refused(const QString &reason)
{
    return {MappingFile::Status::Refused, {}, reason};
}

constexpr qint64 mebibyte = qint64{1024} * 1024;

QString tooLarge()
{
    return QStringLiteral("larger than %1 MiB").arg(MappingFile::maximumSize / mebibyte);
}

// QSaveFile follows one link only; a link to a link would lose the inner one. Empty for links in a circle.
QString linkTarget(const QString &path)
{
    constexpr int maximumLinks = 40; // where the system gives up too
    QString target = path;
    for (int links = 0; links < maximumLinks; ++links) {
        const QFileInfo info(target);
        if (!info.isSymbolicLink()) {
            return target;
        }
        target = info.symLinkTarget();
    }
    return {};
}

} // namespace

MappingFile::ReadResult MappingFile::read(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return {};
    }
    // Opening a pipe or a device could wait for ever.
    if (!info.isFile()) {
        return refused(QStringLiteral("not a regular file"));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return refused(file.errorString());
    }
    const qint64 size = file.size();
    if (size > maximumSize) {
        return refused(tooLarge());
    }
    ReadResult result;
    result.status = Status::Read;
    result.bytes = file.read(size + 1);
    if (file.error() != QFileDevice::NoError) {
        return refused(file.errorString());
    }
    if (result.bytes.size() != size) {
        return refused(QStringLiteral("it changed while it was read"));
    }
    return result;
}

FileResult MappingFile::replace(const QString &path, const QByteArray &bytes)
{
    if (bytes.size() > maximumSize) {
        return FileResult::failed(tooLarge());
    }
    const QString target = linkTarget(path);
    if (target.isEmpty()) {
        return FileResult::failed(QStringLiteral("too many symbolic links"));
    }
    QSaveFile file(target);
    // Flushed and synchronized by hand: commit() would rename in spite of what fails in its own.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        return FileResult::failed(file.errorString());
    }
    const QString fault = DiskSync::sync(file.handle());
    if (!fault.isEmpty()) {
        return FileResult::failed(fault);
    }
    return file.commit() ? FileResult::done() : FileResult::failed(file.errorString());
}

bool MappingFile::makeWritable(const QString &path)
{
    const QFile::Permissions permissions = QFile::permissions(path);
    const QFile::Permissions wanted = permissions | QFile::ReadOwner | QFile::WriteOwner;
    return permissions == wanted || QFile::setPermissions(path, wanted);
}
