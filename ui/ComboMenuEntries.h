#pragma once

#include "engine/KnobMode.h"
#include "mapping/Layer.h"
#include "mapping/ShortCut.h"

#include <QString>
#include <QStringList>

class QMenu;

/// The entries of an action menu's layers, and how an assignment reads.
///
/// Each entry's action carries its untranslated text as data: that is what decides and what is stored. What
/// is displayed is a translation of it.
namespace ComboMenuEntries
{

/// Fills one layer's menu. @p withShift adds the entries that make the control a shift button.
void fill(QMenu &menu, bool withShift);

/// Puts the check mark on the entry that @p action was made with, and on no other.
void check(QMenu &menu, const shortCut &action);

/// The label that the choice of @p text is stored with.
QString labelFor(const QString &text);

/// What is displayed for a stored label: the translation of one of this program's own, any other as it is.
/// One that names a jump to a monitor shows as labelFor() would have stored it.
QString displayed(const QString &label);

/// What the entry that makes such an assignment is called, in the user's language; empty when none does.
QString name(const shortCut &action);

/// What the knob does in @p mode is called so.
QString knobMode(KnobMode mode);

/// What @p action does, in plain words.
QString inWords(const shortCut &action);

/// What a control does, in plain words: a line for each layer, which begins with its name.
QStringList inWords(const PerLayer<shortCut> &actions);

} // namespace ComboMenuEntries
