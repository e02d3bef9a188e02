#pragma once

#include "mapping/FileResult.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

/// The disk side of mapping files: whole files in, whole files out.
///
/// Nothing here knows XML. No function keeps a file open, waits on a pipe or device, or logs.
namespace MappingFile
{

/// Larger files are neither read nor written, nor replaced.
constexpr qint64 maximumSize = qint64{64} * 1024 * 1024;

enum class Status {
    Read,    ///< `bytes` holds the whole file
    Missing, ///< there is no such file, or a link to one that is not there
    Refused, ///< not a regular file, too large, unreadable or changing meanwhile; `reason` says which
};

struct ReadResult {
    Status status = Status::Missing;
    QByteArray bytes;
    QString reason; ///< plain English, empty unless refused
};

ReadResult read(const QString &path);

/// Makes @p bytes the content of the file at @p path, creating it if needed.
///
/// The file holds the old or the new content, whole, at every moment: the new one is written beside it,
/// flushed to the disk and renamed. Permissions are kept; a symbolic link stays and the file it points to is
/// replaced. On failure, also of the disk's own, the old file is as it was.
[[nodiscard]] FileResult replace(const QString &path, const QByteArray &bytes);

/// Removes what a replace() that was killed has left beside the file at @p path, or beside a copy of it (the
/// same name and an ending more). Nothing else has such a name. Not while somebody replaces it.
void removeUnfinished(const QString &path);

/// Lets the file's owner read and write it. False when the owner is somebody else.
bool makeWritable(const QString &path);

} // namespace MappingFile
