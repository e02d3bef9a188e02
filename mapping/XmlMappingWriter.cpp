#include "mapping/XmlMappingWriter.h"

#include "mapping/BrokenFile.h"
#include "mapping/FileHistory.h"
#include "mapping/ListInWords.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingElement.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingFiles.h"
#include "mapping/MappingLog.h"
#include "mapping/XmlMappingReader.h"

#include <QDomDocument>
#include <QStandardPaths>

namespace
{

using MappingDocument::Outcome;

const char emptyDocument[] = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?><ZR/>)"
                             "\n";

// The first mapping below @p root that is called @p name; the empty name is that of mappings without one.
QDomElement called(const QString &name, const QDomElement &root)
{
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString its = child.attribute(QStringLiteral("software"));
        if (its == name && (!its.isEmpty() || child.tagName() == QLatin1String("MAPPING"))) {
            return child;
        }
    }
    return {};
}

FileResult leftUntouched(const QString &path, const QString &reason)
{
    qCWarning(lcMapping).noquote() << "The mapping file" << path << "was left as it is:" << reason;
    return FileResult::failed(reason);
}

FileResult store(const QString &path, const QByteArray &bytes)
{
    FileHistory::note(path); // without which a save is better than none
    FileResult result = MappingFile::replace(path, bytes);
    return result ? result : leftUntouched(path, result.reason());
}

// What was added before is no part of the copy, so that a file is copied once, however often that happens.
FileResult copyAside(const QString &path, QByteArray bytes)
{
    while (bytes.endsWith(emptyDocument)) {
        bytes.chop(static_cast<int>(qstrlen(emptyDocument)));
    }
    return BrokenFile::copyAside(path, bytes);
}

// What could not be read back is not let near the user's file.
FileResult rewrite(const QString &path, QDomDocument *document)
{
    const QByteArray bytes = MappingDocument::serialize(document);
    QDomDocument check;
    QString reason;
    return MappingDocument::parse(bytes, &check, &reason) == Outcome::Parsed ? store(path, bytes)
                                                                             : leftUntouched(path, reason);
}

} // namespace

XmlMappingWriter::XmlMappingWriter(const QString &dataDirectory, QObject *parent)
    : QObject(parent)
    , m_dataDirectory(dataDirectory)
{
}

FileResult XmlMappingWriter::saveMap(const ZRButtonMap *map, const QString &fileName, bool alone)
{
    return map == nullptr ? leftUntouched(fullPath(fileName), QStringLiteral("no mapping was given"))
                          : saveMaps({map}, fileName, alone);
}

FileResult XmlMappingWriter::saveMaps(const QList<const ZRButtonMap *> &maps, const QString &fileName,
                                      bool alone)
{
    const QString path = fullPath(fileName);
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (file.status == MappingFile::Status::Refused) {
        return leftUntouched(path, file.reason);
    }
    QStringList names;
    for (const ZRButtonMap *map : maps) {
        names.append(map->name);
    }
    QByteArray content = alone ? QByteArray() : file.bytes;
    QDomDocument document;
    QString reason;
    Outcome outcome = MappingDocument::parse(content, &document, &reason);
    if (outcome == Outcome::Malformed) {
        content += emptyDocument;
        outcome = MappingDocument::parse(content, &document, &reason);
        if (outcome == Outcome::Malformed) {
            qCWarning(lcMapping).noquote()
                << "The mapping" << names.join(QLatin1String(", ")) << "was not saved, the file" << path
                << "does not parse:" << reason;
            const FileResult copied = copyAside(path, file.bytes);
            if (!copied) {
                return leftUntouched(path, copied.reason());
            }
            const FileResult stored = store(path, content);
            return stored ? FileResult::failed(
                                QStringLiteral("it is no mapping file; a copy of it lies beside it"))
                          : stored;
        }
        if (outcome == Outcome::Parsed) {
            qCInfo(lcMapping) << "custom XML created";
        }
    }
    if (outcome == Outcome::Refused) {
        return leftUntouched(path, reason);
    }
    const int more = names.size() - ListInWords::most;
    qCInfo(lcMapping).noquote().nospace()
        << "Save to XML: " << names.mid(0, ListInWords::most).join(QLatin1String(", "))
        << (more > 0 ? QStringLiteral(" and %1 more").arg(more) : QString());
    QDomElement root = document.firstChildElement(QStringLiteral("ZR"));
    if (root.isNull()) {
        const FileResult rewritten = rewrite(path, &document);
        return rewritten ? FileResult::failed(QStringLiteral("it has no place for a mapping")) : rewritten;
    }
    for (const ZRButtonMap *map : maps) {
        root.appendChild(MappingElement::write(&document, map->name, map->actions));
    }
    return rewrite(path, &document);
}

QByteArray XmlMappingWriter::fileOf(const ZRButtonMap &map)
{
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("ZR"));
    root.appendChild(MappingElement::write(&document, map.name, map.actions));
    document.appendChild(root);
    return MappingDocument::serializeInOrder(document);
}

FileResult XmlMappingWriter::saveToCustom(const ZRButtonMap *map)
{
    return saveMap(map, MappingFiles::customName, false);
}

FileResult XmlMappingWriter::removeMap(const QString &name)
{
    qCInfo(lcMapping).noquote().nospace() << "remove form XML: " << name;
    const QString path = fullPath(MappingFiles::customName);
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (file.status != MappingFile::Status::Read) {
        return leftUntouched(path, file.status == MappingFile::Status::Missing
                                       ? QStringLiteral("there is none")
                                       : file.reason);
    }
    QDomDocument document;
    QString reason;
    if (MappingDocument::parse(file.bytes, &document, &reason) != Outcome::Parsed) {
        return leftUntouched(path, reason);
    }
    QDomElement root = document.firstChildElement(QStringLiteral("ZR"));
    QDomElement mapping = called(name, root);
    if (mapping.isNull() && name == XmlMappingReader::nameForNone()) {
        mapping = called(QString(), root); // whoever has only read what it is called
    }
    root.removeChild(mapping);
    return rewrite(path, &document);
}

QString XmlMappingWriter::fullPath(const QString &fileName) const
{
    const QString directory = m_dataDirectory.isEmpty()
                                  ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                  : m_dataDirectory;
    return directory + fileName;
}
