#include "mapping/XmlMappingReader.h"

#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"
#include "mapping/SpecialAction.h"

#include <QDomDocument>

#include <array>
#include <utility>

namespace
{

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

int number(const QDomElement &element, const QString &attribute)
{
    return element.attribute(attribute).toInt();
}

bool flag(const QDomElement &element, const QString &attribute)
{
    return number(element, attribute) == 1;
}

void readMidi(const QDomElement &key, int buttonPosition, int layerPosition, shortCut *entry)
{
    if (key.attribute(QStringLiteral("channel")).isEmpty()) {
        // A library may leave the numbers out: every control then gets a controller of its own.
        entry->channel = 14;
        entry->cc = layerPosition + 10 * buttonPosition;
        entry->v_on = 127;
        entry->v_off = 0;
        entry->note = false;
        entry->v_off_enable = true;
        entry->label = QStringLiteral("14cc%1").arg(entry->cc);
        return;
    }
    entry->channel = number(key, QStringLiteral("channel"));
    entry->cc = number(key, QStringLiteral("cc"));
    entry->v_on = number(key, QStringLiteral("on_touch"));
    entry->v_off = number(key, QStringLiteral("after_touch"));
    entry->note = flag(key, QStringLiteral("note"));
    entry->v_off_enable = flag(key, QStringLiteral("after_touch_on"));
    entry->knobcc = number(key, QStringLiteral("knobcc"));
    entry->m01h = flag(key, QStringLiteral("m01h"));
    entry->m3fh = flag(key, QStringLiteral("m3fh"));
    entry->m0_127 = flag(key, QStringLiteral("m0_127"));
}

qint32 keyCode(const QString &type, const QString &text)
{
    constexpr int hexadecimal = 16;
    constexpr qint32 noKey = -1;
    if (type == QLatin1String("hex")) {
        return text.toInt(nullptr, hexadecimal);
    }
    if (type == QLatin1String("int")) {
        return text.toInt();
    }
    return text.isEmpty() ? noKey : text.at(0).unicode();
}

shortCut readEntry(const QDomElement &layer, int buttonPosition, int layerPosition)
{
    shortCut entry;
    entry.label = layer.attribute(QStringLiteral("label"));
    const std::array<QDomElement, 3> keys{layer.firstChildElement(QStringLiteral("KEY1")),
                                          layer.firstChildElement(QStringLiteral("KEY2")),
                                          layer.firstChildElement(QStringLiteral("KEY3"))};
    const std::array<qint32 *, 3> slots{&entry.key1, &entry.key2, &entry.key3};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const QDomElement &key = keys[i];
        const QString type = key.attribute(QStringLiteral("type"));
        if (type == QLatin1String("special")) {
            entry.key1 = SPECIAL_ACTION;
            entry.key2 = specialActionCode(key.text());
            entry.key3 = -1;
            break;
        }
        if (type.contains(QLatin1String("midi"))) {
            entry.key1 = type == QLatin1String("midi_knob") ? MIDI_KNOB_ACTION : MIDI_BUTTON_ACTION;
            readMidi(key, buttonPosition, layerPosition, &entry);
            continue;
        }
        *slots[i] = keyCode(type, key.text());
    }
    qCDebug(lcMapping).noquote().nospace()
        << layer.nodeName() << ' ' << entry.label << " keys: " << keys[0].text() << ' ' << keys[1].text()
        << ' ' << keys[2].text();
    return entry;
}

// Below a mapping only positions and attributes count: every node that carries an id is a button. Comments
// and texts take a position like any other node, but have no attributes and no children.
ZRButtonMap *readMapping(const QDomElement &mapping)
{
    const QString name = mapping.attribute(QStringLiteral("software"));
    auto *map = new ZRButtonMap(name.isEmpty() ? QStringLiteral("Unknown") : name, nullptr);
    int buttonPosition = 0;
    for (QDomNode button = mapping.firstChild(); !button.isNull(); button = button.nextSibling()) {
        const QString id = button.toElement().attribute(QStringLiteral("id"));
        int layerPosition = 0;
        for (QDomNode node = button.firstChild(); !node.isNull(); node = node.nextSibling()) {
            const QDomElement layer = node.toElement();
            const QString system = layer.attribute(QStringLiteral("os"));
            if (system.isEmpty() || system == QLatin1String("win")) {
                map->setAction(id, node.nodeName(), readEntry(layer, buttonPosition, layerPosition));
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

void XmlMappingReader::openXml()
{
    if (m_chooser) {
        readMapList(m_chooser(tr("Open Xml"), QStringLiteral("."), tr("Xml files (*.xml)")), false);
    }
}
