#include "tools/lint/LibraryLint.h"

#include "app/frame/ActionLabels.h"
#include "mapping/MappingDocument.h"
#include "mapping/MappingFile.h"
#include "mapping/SpecialAction.h"
#include "mapping/XmlMappingReader.h"

#include <QDomDocument>
#include <QSet>

#include <functional>
#include <memory>
#include <vector>

namespace
{

using Maps = std::vector<std::unique_ptr<ZRButtonMap>>;

bool isShift(const shortCut &action)
{
    const SpecialAction what = specialAction(action);
    return what == SpecialAction::Shift1 || what == SpecialAction::Shift2;
}

QString whatIsWrongWithTheKeys(const shortCut &action)
{
    if (actionKind(action) == ActionKind::Special) {
        return specialAction(action) == SpecialAction::Empty ? QStringLiteral("names no special action")
                                                             : QString();
    }
    if (isMidi(action)) {
        const bool valid = action.channel >= 1 && action.channel <= 16;
        const auto isByte = [](int value) { return value >= 0 && value <= 127; };
        return valid && isByte(action.cc) && isByte(action.v_on) && isByte(action.v_off)
                   ? QString()
                   : QStringLiteral("has a MIDI value out of range");
    }
    if (actionKind(action) != ActionKind::Shortcut) {
        return {};
    }
    const auto isKey = [](int key) { return key > 0 && key < 255; };
    const auto isKeyOrNone = [&isKey](int key) { return key == -1 || isKey(key); };
    return isKey(action.key1) && isKeyOrNone(action.key2) && isKeyOrNone(action.key3)
               ? QString()
               : QStringLiteral("has a key that is none");
}

QString place(int button, Layer layer)
{
    return QStringLiteral("button %1, %2 ").arg(button).arg(Layers::fileName(layer));
}

// What the reader would fill in or drop without a word.
void checkElement(const QDomElement &mapping, const std::function<void(const QString &)> &report)
{
    QSet<QString> seen;
    for (QDomElement button = mapping.firstChildElement(); !button.isNull();
         button = button.nextSiblingElement()) {
        const QString id = button.attribute(QStringLiteral("id"));
        if (button.tagName() != QLatin1String("BUTTON")) {
            report(QStringLiteral("holds an element ") + button.tagName());
        }
        if (seen.contains(id)) {
            report(QStringLiteral("has button %1 twice").arg(id));
        }
        seen.insert(id);
        for (const Layer layer : Layers::all) {
            const QDomElement entry = button.firstChildElement(Layers::fileName(layer));
            if (entry.isNull()) {
                report(QStringLiteral("button %1 lacks %2").arg(id, Layers::fileName(layer)));
            } else if (entry.attribute(QStringLiteral("label")).trimmed().isEmpty()) {
                report(QStringLiteral("button %1, %2 has no label").arg(id, Layers::fileName(layer)));
            }
        }
    }
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        const QString id = QString::number(button);
        if (!seen.remove(id)) {
            report(QStringLiteral("lacks button ") + id);
        }
    }
    for (const QString &id : qAsConst(seen)) {
        report(QStringLiteral("has a button \"%1\"").arg(id));
    }
}

void checkMap(const ZRButtonMap &map, const std::function<void(const QString &)> &report)
{
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        const auto &layers = map.actions[button];
        for (const Layer layer : Layers::all) {
            const QString fault = whatIsWrongWithTheKeys(layers[layer]);
            if (!fault.isEmpty()) {
                report(place(button, layer) + fault);
            }
            if (layers[layer].label.contains(QLatin1Char('|'))) { // it separates the layers in the menu
                report(place(button, layer) + QStringLiteral("has a bar in its label"));
            }
            const bool shifts = isShift(layers[Layer::Normal]);
            if (shifts ? layers[layer].key2 != layers[Layer::Normal].key2 : isShift(layers[layer])) {
                report(place(button, layer) +
                       QStringLiteral("is not the shift button that its other layers are"));
            }
        }
        if (!ActionLabels::fit(layers[Layer::Normal].label, layers[Layer::Shift1].label,
                               layers[Layer::Shift2].label)) {
            report(QStringLiteral("button %1 has labels that do not fit its menu").arg(button));
        }
    }
}

Maps readMaps(const QString &path)
{
    Maps maps;
    XmlMappingReader reader;
    QObject::connect(&reader, &XmlMappingReader::newMapListReady, &reader,
                     [&maps](const QList<ZRButtonMap *> &list, bool, int) {
                         for (ZRButtonMap *map : list) {
                             maps.emplace_back(map);
                         }
                     });
    reader.readMapList(path, false);
    return maps;
}

} // namespace

QStringList LibraryLint::faults(const QString &path)
{
    const MappingFile::ReadResult file = MappingFile::read(path);
    if (file.status != MappingFile::Status::Read) {
        return {file.status == MappingFile::Status::Missing ? QStringLiteral("there is no such file")
                                                            : file.reason};
    }
    QDomDocument document;
    QString reason;
    if (MappingDocument::parse(file.bytes, &document, &reason) != MappingDocument::Outcome::Parsed) {
        return {reason};
    }

    QStringList found;
    if (document.documentElement().tagName() != QLatin1String("ZR")) {
        found.append(QStringLiteral("its root is not ZR"));
    }
    const QDomNodeList elements = document.elementsByTagName(QStringLiteral("MAPPING"));
    const Maps maps = readMaps(path); // in the same order
    if (elements.isEmpty() || static_cast<int>(maps.size()) != elements.size()) {
        return found << QStringLiteral("it holds no mapping");
    }
    QSet<QString> names;
    int defaults = 0;
    for (int index = 0; index < elements.size(); ++index) {
        const QDomElement element = elements.at(index).toElement();
        const QString name = element.attribute(QStringLiteral("software"));
        const QString who = name.isEmpty() ? QStringLiteral("mapping %1").arg(index + 1) : name;
        const auto report = [&found, &who](const QString &fault) {
            found.append(who + QStringLiteral(": ") + fault);
        };
        if (name.isEmpty()) {
            report(QStringLiteral("has no name"));
        } else if (names.contains(name)) {
            report(QStringLiteral("is there twice"));
        }
        names.insert(name);
        defaults += element.attribute(QStringLiteral("default")).isEmpty() ? 0 : 1;
        checkElement(element, report);
        checkMap(*maps[static_cast<std::size_t>(index)], report);
    }
    if (defaults != 1) {
        found.append(QStringLiteral("%1 mappings are marked as the default, not one").arg(defaults));
    }
    return found;
}
