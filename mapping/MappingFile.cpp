#include "mapping/MappingFile.h"

#include "mapping/DiskSync.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <filesystem>

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

// The file behind all links, which stay. Empty for links in a circle.
QString linkTarget(const QString &path)
{
    constexpr int maximumLinks = 40; // the system does not follow more
    QString target = path;
    for (int links = 0; links <= maximumLinks; ++links) {
        const QFileInfo info(target);
        if (!info.isSymbolicLink()) {
            return target;
        }
        target = info.symLinkTarget();
    }
    return {};
}

// The toolkit's own way gives its files names that a user's copy can have too: six letters, as in ".backup".
QString unfinishedName(const QString &target)
{
    return target + QStringLiteral(".veltrix-%1")
                        .arg(QRandomGenerator::global()->generate64(), 16, 16, QLatin1Char('0'));
}

// Writes @p bytes to @p file and has it take the place of @p old. What stood in the way; empty when nothing
// did.
QString writeWhole(QFile &file, const QByteArray &bytes, const QFileInfo &old)
{
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) ||
        (old.exists() && !file.setPermissions(old.permissions())) || file.write(bytes) != bytes.size() ||
        !file.flush()) {
        return file.errorString();
    }
    QString fault = DiskSync::sync(file.handle());
    if (!fault.isEmpty()) {
        return fault;
    }
    file.close();
    std::error_code error;
    std::filesystem::rename(file.fileName().toStdU16String(), old.filePath().toStdU16String(), error);
    return error ? QString::fromLocal8Bit(error.message().c_str()) : QString();
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
    const QFileInfo old(target);
    if (old.exists() && !old.isFile()) {
        return FileResult::failed(QStringLiteral("not a regular file"));
    }
    if (old.exists() && !old.isWritable()) {
        return FileResult::failed(QStringLiteral("Existing file is not writable"));
    }
    QFile file(unfinishedName(target));
    const QString fault = writeWhole(file, bytes, old);
    if (!fault.isEmpty()) {
        file.close();
        QFile::remove(file.fileName()); // which the object refuses when what it has left cannot be written
        return FileResult::failed(fault);
    }
    return FileResult::done();
}

void MappingFile::removeUnfinished(const QString &path)
{
    const QFileInfo info(linkTarget(path));
    const QRegularExpression unfinished(QStringLiteral("^%1(\\.\\w+)?\\.veltrix-[0-9a-f]{16}$")
                                            .arg(QRegularExpression::escape(info.fileName())));
    QDir folder = info.dir();
    const QStringList files = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : files) {
        if (unfinished.match(name).hasMatch()) {
            folder.remove(name);
        }
    }
}

bool MappingFile::makeWritable(const QString &path)
{
    const QFile::Permissions permissions = QFile::permissions(path);
    const QFile::Permissions wanted = permissions | QFile::ReadOwner | QFile::WriteOwner;
    return permissions == wanted || QFile::setPermissions(path, wanted);
}
