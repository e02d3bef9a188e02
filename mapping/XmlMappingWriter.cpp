#include "mapping/XmlMappingWriter.h"

#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"
#include "mapping/SpecialAction.h"

#include <QDomDocument>
#include <QStandardPaths>

namespace
{

using MappingDocument::Outcome;

const char emptyDocument[] = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?><ZR/>)"
                             "\n";

QString customFile()
{
    return QStringLiteral("/custom.xml");
}

void setText(QDomElement *element, const QString &attribute, const QString &text)
{
    const QString kept = MappingDocument::carriable(text);
    if (kept.size() != text.size()) {
        qCWarning(lcMapping).noquote()
            << "Characters that a mapping file cannot carry were dropped from" << kept;
    }
    element->setAttribute(attribute, kept);
}

void appendKey(QDomDocument *document, QDomElement *layer, const QString &tag, const QString &type,
               const QString &text)
{
    QDomElement key = document->createElement(tag);
    key.setAttribute(QStringLiteral("type"), type);
    key.appendChild(document->createTextNode(text));
    layer->appendChild(key);
}

void appendMidiKey(QDomDocument *document, QDomElement *layer, const shortCut &entry)
{
    const bool knob = entry.key1 == MIDI_KNOB_ACTION;
    QDomElement key = document->createElement(QStringLiteral("KEY1"));
    key.setAttribute(QStringLiteral("type"), knob ? QStringLiteral("midi_knob") : QStringLiteral("midi"));
    key.setAttribute(QStringLiteral("channel"), entry.channel);
    key.setAttribute(QStringLiteral("cc"), entry.cc);
    key.setAttribute(QStringLiteral("on_touch"), entry.v_on);
    key.setAttribute(QStringLiteral("after_touch"), entry.v_off);
    key.setAttribute(QStringLiteral("note"), entry.note ? 1 : 0);
    key.setAttribute(QStringLiteral("after_touch_on"), entry.v_off_enable ? 1 : 0);
    key.setAttribute(QStringLiteral("knobcc"), entry.knobcc);
    key.setAttribute(QStringLiteral("m01h"), entry.m01h ? 1 : 0);
    key.setAttribute(QStringLiteral("m3fh"), entry.m3fh ? 1 : 0);
    key.setAttribute(QStringLiteral("m0_127"), entry.m0_127 ? 1 : 0);
    layer->appendChild(key);
}

QDomElement layerElement(QDomDocument *document, const QString &name, const shortCut &entry)
{
    QDomElement layer = document->createElement(name);
    setText(&layer, QStringLiteral("label"), entry.label);
    if (isMidiAction(entry.key1)) {
        appendMidiKey(document, &layer, entry);
    } else if (entry.key1 == SPECIAL_ACTION) {
        appendKey(document, &layer, QStringLiteral("KEY1"), QStringLiteral("special"),
                  specialActionName(entry.key2));
    } else {
        appendKey(document, &layer, QStringLiteral("KEY1"), QStringLiteral("int"),
                  QString::number(entry.key1));
        appendKey(document, &layer, QStringLiteral("KEY2"), QStringLiteral("int"),
                  QString::number(entry.key2));
        appendKey(document, &layer, QStringLiteral("KEY3"), QStringLiteral("int"),
                  QString::number(entry.key3));
    }
    return layer;
}

QDomElement mappingElement(QDomDocument *document, const ZRButtonMap &map)
{
    QDomElement mapping = document->createElement(QStringLiteral("MAPPING"));
    setText(&mapping, QStringLiteral("software"), map.name);
    for (int button = 0; button < ZRButtonMap::buttonCount; ++button) {
        QDomElement element = document->createElement(QStringLiteral("BUTTON"));
        element.setAttribute(QStringLiteral("id"), button);
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            element.appendChild(
                layerElement(document, ZRButtonMap::layerName(layer), map.actions[button][layer]));
        }
        mapping.appendChild(element);
    }
    return mapping;
}

void logUntouched(const QString &path, const QString &reason)
{
    qCWarning(lcMapping).noquote() << "The mapping file" << path << "was left as it is:" << reason;
}

void store(const QString &path, const QByteArray &bytes)
{
    QString reason;
    if (!MappingFile::replace(path, bytes, &reason)) {
        logUntouched(path, reason);
    }
}

// What could not be read back is not let near the user's file.
void rewrite(const QString &path, QDomDocument *document)
{
    const QByteArray bytes = MappingDocument::serialize(document);
    QDomDocument check;
    QString reason;
    if (MappingDocument::parse(bytes, &check, &reason) == Outcome::Parsed) {
        store(path, bytes);
    } else {
        logUntouched(path, reason);
    }
}

} // namespace

XmlMappingWriter::XmlMappingWriter(const QString &dataDirectory, QObject *parent)
    : QObject(parent)
    , m_dataDirectory(dataDirectory)
{
}

void XmlMappingWriter::saveMap(const ZRButtonMap *map, const QString &fileName, bool alone)
{
    const QString path = fullPath(fileName);
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (map == nullptr || file.status == MappingFile::Status::Refused) {
        logUntouched(path, map == nullptr ? QStringLiteral("no mapping was given") : file.reason);
        return;
    }
    QByteArray content = alone ? QByteArray() : file.bytes;
    QDomDocument document;
    QString reason;
    Outcome outcome = MappingDocument::parse(content, &document, &reason);
    if (outcome == Outcome::Malformed) {
        content += emptyDocument;
        outcome = MappingDocument::parse(content, &document, &reason);
        if (outcome == Outcome::Malformed) {
            qCWarning(lcMapping).noquote() << "The mapping" << map->name << "was not saved, the file" << path
                                           << "does not parse:" << reason;
            store(path, content);
            return;
        }
        if (outcome == Outcome::Parsed) {
            qCInfo(lcMapping) << "custom XML created";
        }
    }
    if (outcome == Outcome::Refused) {
        logUntouched(path, reason);
        return;
    }
    qCInfo(lcMapping).noquote().nospace() << "Save to XML: " << map->name;
    QDomElement root = document.firstChildElement(QStringLiteral("ZR"));
    if (!root.isNull()) {
        root.appendChild(mappingElement(&document, *map));
    }
    rewrite(path, &document);
}

void XmlMappingWriter::saveToCustom(const ZRButtonMap *map)
{
    saveMap(map, customFile(), false);
}

void XmlMappingWriter::removeMap(const QString &name)
{
    qCInfo(lcMapping).noquote().nospace() << "remove form XML: " << name;
    const QString path = fullPath(customFile());
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (file.status != MappingFile::Status::Read) {
        logUntouched(path, file.status == MappingFile::Status::Missing ? QStringLiteral("there is none")
                                                                       : file.reason);
        return;
    }
    QDomDocument document;
    QString reason;
    if (MappingDocument::parse(file.bytes, &document, &reason) != Outcome::Parsed) {
        logUntouched(path, reason);
        return;
    }
    QDomElement root = document.firstChildElement(QStringLiteral("ZR"));
    for (QDomElement child = root.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        if (child.attribute(QStringLiteral("software")) == name) {
            root.removeChild(child);
            break;
        }
    }
    rewrite(path, &document);
}

QString XmlMappingWriter::fullPath(const QString &fileName) const
{
    const QString directory = m_dataDirectory.isEmpty()
                                  ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                  : m_dataDirectory;
    return directory + fileName;
}
