#pragma once

#include "mapping/ActionTable.h"

#include <QDomElement>
#include <QString>

/// The element of a mapping file that holds one whole mapping.
namespace MappingElement
{

inline const QLatin1String tagName{"MAPPING"};
inline const QLatin1String nameAttribute{"software"};

/// An element with all that @p actions hold, in no place of @p document yet. Characters that XML cannot carry
/// are dropped.
QDomElement write(QDomDocument *document, const QString &name, const ActionTable &actions);

/// Calls @p take for each entry of @p mapping that is meant for this program: with its button and its layer
/// as they stand there.
///
/// Only positions and attributes count: every node that carries an id is a button. Comments and texts take a
/// position like any other node, but have no attributes and no children.
template <typename Take>
void eachEntry(const QDomElement &mapping, const Take &take);

/// All that write() has written, the knob's fields too. Entries that are missing are as a new one.
ActionTable readWhole(const QDomElement &mapping);

} // namespace MappingElement

#include "mapping/EntryElement.h"

template <typename Take>
void MappingElement::eachEntry(const QDomElement &mapping, const Take &take)
{
    int buttonPosition = 0;
    for (QDomNode button = mapping.firstChild(); !button.isNull(); button = button.nextSibling()) {
        const QString id = button.toElement().attribute(QStringLiteral("id"));
        int layerPosition = 0;
        for (QDomNode node = button.firstChild(); !node.isNull(); node = node.nextSibling()) {
            const QDomElement layer = node.toElement();
            const QString system = layer.attribute(QStringLiteral("os"));
            if (system.isEmpty() || system == QLatin1String("win")) {
                take(id, node.nodeName(), EntryElement::read(layer, buttonPosition, layerPosition));
            }
            ++layerPosition;
        }
        ++buttonPosition;
    }
}
