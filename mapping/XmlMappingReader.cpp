#include "mapping/XmlMappingReader.h"

#include "mapping/EntryElement.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"

#include <QDomDocument>

#include <utility>

namespace
{

constexpr char namelessProperty[] = "nameless";

// The next element in document order, a null element behind the last.
QDomElement following(const QDomElement &element)
{
    const QDomElement child = element.firstChildElement();
    if (!child.isNull()) {
        return child;
    }
    for (QDomNode node = element; !node.isNull(); node = node.parentNode()) {
        const QDomElement sibling = node.nextSiblingElement();
        if (!sibling.isNull()) {
            return sibling;
        }
    }
    return {};
}

// @p element itself, or the first mapping behind it in document order: mappings are found at any depth.
QDomElement firstMapping(QDomElement element)
{
    while (!element.isNull() && element.tagName() != QLatin1String("MAPPING")) {
        element = following(element);
    }
    return element;
}

// Below a mapping only positions and attributes count: every node that carries an id is a button. Comments
// and texts take a position like any other node, but have no attributes and no children.
ZRButtonMap *readMapping(const QDomElement &mapping)
{
    const QString name = mapping.attribute(QStringLiteral("software"));
    auto *map = new ZRButtonMap(name.isEmpty() ? XmlMappingReader::nameForNone() : name, nullptr);
    if (name.isEmpty()) {
        map->setProperty(namelessProperty, true);
    }
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
    for (QDomElement mapping = firstMapping(document.documentElement()); !mapping.isNull();
         mapping = firstMapping(following(mapping))) {
        if (!mapping.attribute(QStringLiteral("default")).isEmpty()) {
            defaultMap = m_buttonMapList.size();
        }
        m_buttonMapList.append(readMapping(mapping));
    }
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
    const QDomElement mapping = firstMapping(document.documentElement());
    if (mapping.isNull()) {
        return FileResult::failed(QStringLiteral("it holds no mapping"));
    }
    Q_EMIT onCurrentMapLoaded(readMapping(mapping));
    return result;
}

bool XmlMappingReader::isNameless(const ZRButtonMap &map)
{
    return map.property(namelessProperty).toBool();
}

void XmlMappingReader::openXml()
{
    if (m_chooser) {
        readMapList(m_chooser(tr("Open Xml"), QStringLiteral("."), tr("Xml files (*.xml)")), false);
    }
}
