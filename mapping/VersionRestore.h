#pragma once

#include "mapping/FileResult.h"
#include "mapping/MappingFiles.h"

#include <QString>

/// Brings an earlier version of one of the user's two files back.
namespace VersionRestore
{

/// The file of which @p version is one, going by its name, which is the file's own or one of FileHistory's;
/// empty when there is none. Where it lies does not matter.
QString fileOf(const QString &version, const MappingFiles &files);

/// What the user means by @p named: that path, if there is such a file, else one of the versions in the
/// history of @p files.
QString find(const QString &named, const MappingFiles &files);

/// Makes what @p version holds the content of its file. What that held before goes to its history first, or
/// nothing is done. Refused is what is no version of either file, cannot be read, is no mapping file, or is
/// to be the working copy and holds no mapping: the reason says where in the file, if it is there.
FileResult restore(const QString &version, const MappingFiles &files);

} // namespace VersionRestore
