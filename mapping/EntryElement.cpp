#include "mapping/EntryElement.h"

#include "mapping/MappingDocument.h"
#include "mapping/MappingLog.h"
#include "mapping/SpecialAction.h"

#include <QDomDocument>

#include <array>

namespace
{

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
    const bool knob = actionKind(entry) == ActionKind::MidiKnob;
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

} // namespace

shortCut EntryElement::read(const QDomElement &layer, int buttonPosition, int layerPosition)
{
    shortCut entry;
    // A copy of its own: one that lay among the document's nodes would keep their memory from being given
    // back.
    const QString label = layer.attribute(QStringLiteral("label"));
    entry.label = QString(label.constData(), label.size());
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

QDomElement EntryElement::write(QDomDocument *document, const QString &name, const shortCut &entry)
{
    QDomElement layer = document->createElement(name);
    MappingDocument::setText(&layer, QStringLiteral("label"), entry.label);
    switch (actionKind(entry)) {
    case ActionKind::MidiKnob:
    case ActionKind::MidiButton:
        appendMidiKey(document, &layer, entry);
        break;
    case ActionKind::Special:
        appendKey(document, &layer, QStringLiteral("KEY1"), QStringLiteral("special"),
                  specialActionName(entry.key2));
        break;
    case ActionKind::Shortcut:
        appendKey(document, &layer, QStringLiteral("KEY1"), QStringLiteral("int"),
                  QString::number(entry.key1));
        appendKey(document, &layer, QStringLiteral("KEY2"), QStringLiteral("int"),
                  QString::number(entry.key2));
        appendKey(document, &layer, QStringLiteral("KEY3"), QStringLiteral("int"),
                  QString::number(entry.key3));
        break;
    }
    return layer;
}
