#include "mapping/XmlMappingReader.h"

#include "mapping/EntryElement.h"
#include "mapping/MappingDocument.h"
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
    static const QString name = QStringLiteral("MAPPING");
    for (QDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if ((child.tagName() == name && !take(child)) || !eachMapping(child, take)) {
            return false;
        }
    }
    return true;
}

// Below a mapping only positions and attributes count: every node that carries an id is a button. Comments
// and texts take a position like any other node, but have no attributes and no children.
ZRButtonMap *readMapping(const QDomElement &mapping)
{
    const QString name = mapping.attribute(QStringLiteral("software"));
    auto *map = new ZRButtonMap(name.isEmpty() ? XmlMappingReader::nameForNone() : name, nullptr);
    int buttonPosition = 0;
    for (QDomNode button = mapping.firstChild(); !button.isNull(); button = button.nextSibling()) {
        const QString id = button.toElement().attribute(QStringLiteral("id"));
        int layerPosition = 0;
        for (QDomNode node = button.firstChild(); !node.isNull(); node = node.nextSibling()) {
            const QDomElement layer = node.toElement();
            const QString system = layer.attribute(QStringLiteral("os"));
            if (system.isEmpty() || system == QLatin1String("win")) {
                map->setAction(id, node.nodeName(), EntryElement::read(layer, buttonPosition, layerPosition));
            }
            ++layerPosition;
        }
        ++buttonPosition;
    }
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
