#include "mapping/MappingElement.h"

#include "mapping/MappingDocument.h"

#include <QDomDocument>

QDomElement MappingElement::write(QDomDocument *document, const QString &name, const ActionTable &actions)
{
    QDomElement mapping = document->createElement(tagName);
    MappingDocument::setText(&mapping, nameAttribute, name);
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        QDomElement element = document->createElement(QStringLiteral("BUTTON"));
        element.setAttribute(QStringLiteral("id"), button);
        for (const Layer layer : Layers::all) {
            element.appendChild(
                EntryElement::write(document, Layers::fileName(layer), actions[button][layer]));
        }
        mapping.appendChild(element);
    }
    return mapping;
}

ActionTable MappingElement::readWhole(const QDomElement &mapping)
{
    ActionTable actions;
    eachEntry(mapping, [&actions](const QString &id, const QString &layerName, const shortCut &entry) {
        bool isNumber = false;
        const int button = id.toInt(&isNumber);
        for (const Layer layer : Layers::all) {
            if (isNumber && ActionTable::has(button) && Layers::fileName(layer) == layerName) {
                actions[button][layer] = entry;
            }
        }
    });
    return actions;
}
