#include "mapping/XmlMappingReader.h"

#include "mapping/FreedMemory.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingElement.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"

#include <QDomDocument>

#include <utility>

namespace
{

// Takes every mapping below @p parent, at any depth and in document order, to @p take, until that answers
// false. Depth is bounded (MappingDocument::maximumDepth).
template <typename Take>
bool eachMapping(const QDomNode &parent, const Take &take)
{
    static const QString name = MappingElement::tagName;
    for (QDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if ((child.tagName() == name && !take(child)) || !eachMapping(child, take)) {
            return false;
        }
    }
    return true;
}

ZRButtonMap *readMapping(const QDomElement &mapping)
{
    const QString name = mapping.attribute(MappingElement::nameAttribute);
    auto *map = new ZRButtonMap(
        name.isEmpty() ? XmlMappingReader::nameForNone() : QString(name.constData(), name.size()), nullptr);
    MappingElement::eachEntry(mapping, [map](const QString &id, const QString &layer, const shortCut &entry) {
        map->setAction(id, layer, entry);
    });
    return map;
}

FileResult load(const QString &path, QDomDocument *document)
{
    if (path.isEmpty()) {
        return FileResult::failed(QStringLiteral("no file was named"));
    }
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (file.status == MappingFile::Status::Missing) {
        qCInfo(lcMapping).noquote() << "There is no mapping file" << path;
        return FileResult::failed(QStringLiteral("there is none"));
    }
    QString reason = file.reason;
    if (file.status == MappingFile::Status::Refused ||
        MappingDocument::parse(file.bytes, document, &reason) != MappingDocument::Outcome::Parsed) {
        qCWarning(lcMapping).noquote() << "The mapping file" << path << "was not read:" << reason;
        return FileResult::failed(reason);
    }
    return FileResult::done();
}

} // namespace

XmlMappingReader::XmlMappingReader(FileChooser chooser, QObject *parent)
    : QObject(parent)
    , m_chooser(std::move(chooser))
{
}

FileResult XmlMappingReader::readMapList(const QString &path, bool custom)
{
    const FreedMemory::GiveBack afterDocument;
    QDomDocument document;
    FileResult result = load(path, &document);
    if (!result) {
        return result;
    }
    m_buttonMapList.clear();
    int defaultMap = 0;
    // Each mapping is read as soon as the search meets it: the nodes are in the cache then.
    eachMapping(document, [&](const QDomElement &mapping) {
        if (!mapping.attribute(QStringLiteral("default")).isEmpty()) {
            defaultMap = m_buttonMapList.size();
        }
        m_buttonMapList.append(readMapping(mapping));
        return true;
    });
    Q_EMIT newMapListReady(m_buttonMapList, custom, defaultMap);
    return result;
}

FileResult XmlMappingReader::readCurrentMap(const QString &path)
{
    qCInfo(lcMapping).noquote() << "File Name:" << path;
    QDomDocument document;
    FileResult result = load(path, &document);
    if (!result) {
        return result;
    }
    const bool none = eachMapping(document, [this](const QDomElement &mapping) {
        Q_EMIT onCurrentMapLoaded(readMapping(mapping));
        return false;
    });
    if (none) {
        return FileResult::failed(QStringLiteral("it holds no mapping"));
    }
    return result;
}

bool XmlMappingReader::isNameless(const ZRButtonMap &map)
{
    return map.name.constData() == nameForNone().constData();
}

const QString &XmlMappingReader::nameForNone()
{
    static const QString name = QStringLiteral("Unknown");
    return name;
}

void XmlMappingReader::openXml()
{
    if (m_chooser) {
        readMapList(m_chooser(tr("Open Xml"), QStringLiteral("."), tr("Xml files (*.xml)")), false);
    }
}
