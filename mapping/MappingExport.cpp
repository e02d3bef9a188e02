#include "mapping/MappingExport.h"

#include "mapping/ImportedMappings.h"
#include "mapping/MappingFile.h"
#include "mapping/XmlMappingWriter.h"

#include <QRegularExpression>

#include <limits>

std::unique_ptr<ZRButtonMap> MappingExport::find(const QString &name, const MappingFiles &files)
{
    for (const QString &path : {files.custom(), files.library()}) {
        const ImportedMappings read(path, std::numeric_limits<int>::max());
        for (const auto &map : read.maps()) {
            if (map->name == name) {
                auto found = std::make_unique<ZRButtonMap>(name);
                found->actions = map->actions;
                return found;
            }
        }
    }
    return nullptr;
}

FileResult MappingExport::write(const ZRButtonMap &map, const QString &path)
{
    return MappingFile::replace(path, XmlMappingWriter::fileOf(map));
}

QString MappingExport::fileName(const QString &mapping)
{
    constexpr int longest =
        60; // characters, of which each may need four bytes of the 255 that a name can have
    QString name = mapping.simplified();
    name.replace(QRegularExpression(QStringLiteral("[\\x00-\\x1F\\x7F<>:\"/\\\\|?*]")), QStringLiteral("_"));
    name = name.left(longest);
    if (!name.isEmpty() && name.at(name.size() - 1).isHighSurrogate()) {
        name.chop(1); // half of a character
    }
    // Names with a dot at an end are hidden or cut off.
    name.replace(QRegularExpression(QStringLiteral("^\\.+|[. ]+$")), QStringLiteral("_"));
    // Devices of Windows have these names, with any ending and in both cases.
    name.replace(QRegularExpression(
                     QStringLiteral("^(con|prn|aux|nul|(?:com|lpt)[0-9\u00b9\u00b2\u00b3]|conin\\$|conout\\$)"
                                    "(?= *(?:\\.|$))"),
                     QRegularExpression::CaseInsensitiveOption),
                 QStringLiteral("\\1_"));
    return (name.isEmpty() ? QStringLiteral("mapping") : name) + QStringLiteral(".xml");
}
