#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// The tool tips of the page's controls: what it is, what it does, and what a click does. One style for all.
namespace ControlTip
{

/// "Button 3", as it is called wherever it is named; "Knob" for -1.
QString name(int control);

/// All parts are plain text; each line of @p lines is one of the tool tip. @p hint may be empty.
QString text(const QString &name, const QStringList &lines, const QString &hint);

/// The style sheet's rule for tool tips. Whoever's ground the page's sheet is needs it.
QString sheet();

/// Has @p page's own children show their tool tips in this style, though the sheets of some have to say
/// exactly what they say. Returns a widget that a tool tip is to be shown for which is none of theirs.
QWidget *install(QWidget *page);

} // namespace ControlTip
