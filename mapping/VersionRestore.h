#pragma once

#include "mapping/FileResult.h"
#include "mapping/MappingFiles.h"

#include <QByteArray>
#include <QString>

/// Brings an earlier version of one of the user's files back: his own mappings, the working copy, those of
/// programs.
namespace VersionRestore
{

/// The file of which @p version is one, going by its name, which is the file's own or one of FileHistory's;
/// empty when there is none. Where it lies does not matter.
QString fileOf(const QString &version, const MappingFiles &files);

/// What the user means by @p named: that path, if there is such a file, else one of the versions in the
/// history of @p files.
QString find(const QString &named, const MappingFiles &files);

/// What is to be brought back.
struct Content {
    FileResult result; ///< why it is refused, if it is; what follows is empty then
    QString file;      ///< whose content it becomes
    QByteArray bytes;
};

/// Reads @p version. Refused is what is no version of any of these files, cannot be read, is no mapping file,
/// is to be the working copy and holds no mapping, or is to be that of programs and holds mappings of nobody:
/// the reason says where in the file, if it is there.
Content read(const QString &version, const MappingFiles &files);

/// Makes @p content, which was not refused, that of its file. What that held before goes to its history
/// first, or nothing is done.
FileResult put(const Content &content);

/// Both.
FileResult restore(const QString &version, const MappingFiles &files);

} // namespace VersionRestore
