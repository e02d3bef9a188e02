#pragma once

#include "mapping/FileResult.h"

#include <QDateTime>
#include <QString>
#include <QVector>

/// Earlier versions of the user's mapping files, each a file of its own in the folder "history" beside them.
///
/// Of each file the newest thirty are kept, and of each of the last thirty days the newest. Other files in
/// the folder are never touched.
namespace FileHistory
{

constexpr int mostVersions = 30;
constexpr int mostDays = 30;
constexpr int shortestPause = 60; ///< seconds between two versions of a file

struct Version {
    QString path;
    QDateTime time; ///< when the file was about to be rewritten, UTC
};

/// The folder for the versions of @p file.
QString folder(const QString &file);

/// Notes the present content of @p file, which is about to be replaced or removed as a whole, unless that was
/// done less than shortestPause ago or the newest version holds the same. Costs no copy where the file system
/// lets a file have two names. What is not there, or is no file, has no version. A failure leaves a line in
/// the log.
FileResult note(const QString &file, const QDateTime &now = QDateTime::currentDateTimeUtc());

/// The same however little time has passed.
FileResult noteAnyway(const QString &file, const QDateTime &now = QDateTime::currentDateTimeUtc());

/// The versions of @p file, the newest first.
QVector<Version> versions(const QString &file);

/// Whether @p version is, going by its name, @p file itself or a version of it, wherever it lies.
bool isOf(const QString &version, const QString &file);

} // namespace FileHistory
