#pragma once

#include "mapping/FileResult.h"

#include <QByteArray>
#include <QString>

/// What becomes of a user's file that turned out to be no mapping file: a copy is left beside it, before
/// anything takes its place.
namespace BrokenFile
{

/// Where the copy number @p number, from 1 on, is left of the file @p path.
QString copyName(const QString &path, int number = 1);

/// Leaves a copy of the file @p path, which holds @p bytes; one for each content.
FileResult copyAside(const QString &path, const QByteArray &bytes);

} // namespace BrokenFile
