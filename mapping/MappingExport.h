#pragma once

#include "mapping/FileResult.h"
#include "mapping/MappingFiles.h"
#include "mapping/ZRButtonMap.h"

#include <QString>

#include <memory>

/// A mapping as a file for somebody else, or for another computer: what ImportedMappings reads.
namespace MappingExport
{

/// All fields of the first of the user's mappings in @p files that is called @p name, else of the library's.
/// Null when there is none.
std::unique_ptr<ZRButtonMap> find(const QString &name, const MappingFiles &files);

/// Makes the file at @p path hold @p map alone: the same bytes for the same mapping on every computer.
FileResult write(const ZRButtonMap &map, const QString &path);

/// A name for such a file, which every system can have.
QString fileName(const QString &mapping);

} // namespace MappingExport
