#include "mapping/FileHistory.h"

#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace
{

// Sorts by time, and is a name on every file system.
const QString dateFormat = QStringLiteral("yyyyMMdd");
const QString timeFormat = QStringLiteral("HHmmsszzz");

QString versionName(const QString &fileName, const QDateTime &time)
{
    const QFileInfo file(fileName);
    const QDateTime utc = time.toUTC();
    return QStringLiteral("%1-%2T%3Z.%4")
        .arg(file.completeBaseName(), utc.date().toString(dateFormat), utc.time().toString(timeFormat),
             file.suffix());
}

// The names that versionName() gives, and those of unfinished copies.
QRegularExpression versionNames(const QString &fileName)
{
    const QFileInfo file(fileName);
    return QRegularExpression(QStringLiteral("^%1-(\\d{8})T(\\d{9})Z\\.%2(\\.veltrix-[0-9a-f]{16})?$")
                                  .arg(QRegularExpression::escape(file.completeBaseName()),
                                       QRegularExpression::escape(file.suffix())));
}

// Nothing for what is no version.
std::optional<QDateTime> timeOf(const QRegularExpressionMatch &name)
{
    const QDateTime time(QDate::fromString(name.captured(1), dateFormat),
                         QTime::fromString(name.captured(2), timeFormat), Qt::UTC);
    return time.isValid() && name.captured(3).isEmpty() ? std::optional(time) : std::nullopt;
}

// A second name where the file system knows such a thing: what is replaced later is the first one's.
FileResult keepContent(const QString &file, const QString &version)
{
    std::error_code error;
    std::filesystem::create_hard_link(QFileInfo(file).canonicalFilePath().toStdU16String(),
                                      version.toStdU16String(), error);
    if (!error) {
        return FileResult::done();
    }
    const MappingFile::ReadResult present = MappingFile::read(file);
    return present.status == MappingFile::Status::Read ? MappingFile::replace(version, present.bytes)
                                                       : FileResult::failed(present.reason);
}

bool holdsTheSame(const QString &one, const QString &other)
{
    if (QFileInfo(one).size() != QFileInfo(other).size()) {
        return false;
    }
    const MappingFile::ReadResult first = MappingFile::read(one);
    const MappingFile::ReadResult second = MappingFile::read(other);
    return first.status == MappingFile::Status::Read && second.status == MappingFile::Status::Read &&
           first.bytes == second.bytes;
}

void removeOld(const QString &file, const QDateTime &now)
{
    QSet<QDate> days;
    int number = 0;
    const QVector<FileHistory::Version> versions = FileHistory::versions(file);
    for (const FileHistory::Version &version : versions) {
        const QDate day = version.time.toLocalTime().date();
        const bool lastOfItsDay = !days.contains(day);
        days.insert(day);
        const bool recent = version.time.daysTo(now) < FileHistory::mostDays;
        if (++number > FileHistory::mostVersions && !(lastOfItsDay && recent)) {
            QFile::remove(version.path);
        }
    }
}

void removeUnfinished(const QString &file)
{
    QDir folder(FileHistory::folder(file));
    const QRegularExpression names = versionNames(file);
    const QStringList files = folder.entryList(QDir::Files);
    for (const QString &name : files) {
        if (!names.match(name).captured(3).isEmpty()) {
            folder.remove(name);
        }
    }
}

FileResult add(const QString &file, const QDateTime &now)
{
    const QDir folder(FileHistory::folder(file));
    if (!folder.mkpath(QStringLiteral("."))) {
        return FileResult::failed(QStringLiteral("the folder %1 cannot be made").arg(folder.path()));
    }
    QDateTime time = now;
    while (folder.exists(versionName(file, time))) {
        time = time.addMSecs(1);
    }
    FileResult result = keepContent(file, folder.filePath(versionName(file, time)));
    if (result) {
        removeOld(file, now);
        removeUnfinished(file);
    }
    return result;
}

FileResult note(const QString &file, const QDateTime &now, int pause)
{
    if (!QFileInfo(file).isFile()) {
        return FileResult::done();
    }
    const QVector<FileHistory::Version> before = FileHistory::versions(file);
    if (!before.isEmpty()) {
        // A clock that was set back does not end the history.
        const qint64 since = before.constFirst().time.secsTo(now);
        if ((since >= 0 && since < pause) || holdsTheSame(file, before.constFirst().path)) {
            return FileResult::done();
        }
    }
    FileResult result = add(file, now);
    if (!result) {
        qCWarning(lcMapping).noquote() << "No earlier version of" << file << "was kept:" << result.reason();
    }
    return result;
}

} // namespace

QString FileHistory::folder(const QString &file)
{
    return QFileInfo(file).path() + QStringLiteral("/history");
}

FileResult FileHistory::note(const QString &file, const QDateTime &now)
{
    return ::note(file, now, shortestPause);
}

FileResult FileHistory::noteAnyway(const QString &file, const QDateTime &now)
{
    return ::note(file, now, 0);
}

QVector<FileHistory::Version> FileHistory::versions(const QString &file)
{
    QVector<Version> found;
    const QDir directory(folder(file));
    const QRegularExpression names = versionNames(file);
    const QStringList files = directory.entryList(QDir::Files);
    for (const QString &name : files) {
        if (const auto time = timeOf(names.match(name))) {
            found.append({directory.filePath(name), *time});
        }
    }
    std::sort(found.begin(), found.end(),
              [](const Version &one, const Version &other) { return one.time > other.time; });
    return found;
}

bool FileHistory::isOf(const QString &version, const QString &file)
{
    const QString name = QFileInfo(version).fileName();
    return name == QFileInfo(file).fileName() || timeOf(versionNames(file).match(name)).has_value();
}
