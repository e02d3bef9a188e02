#pragma once

#include "mapping/ShortCut.h"

#include <QString>

class QDomDocument;
class QDomElement;

/// The element of a mapping file that says what one control does in one layer: the only place that knows how
/// each kind of action is written.
///
/// The two directions differ on purpose. Keys are written as numbers and may be read as characters; a special
/// action's third key is not written, and read as -1.
namespace EntryElement
{

/// What @p layer says. The positions, among the mapping's children and the button's, number the controllers
/// of MIDI actions that name none.
shortCut read(const QDomElement &layer, int buttonPosition, int layerPosition);

/// An element called @p name, in no place of @p document yet. Characters that XML cannot carry are dropped.
QDomElement write(QDomDocument *document, const QString &name, const shortCut &entry);

} // namespace EntryElement
