#pragma once

class QAccessibleInterface;
class QObject;
class QString;

/// Tells screen readers that a ComboMenuBar is a button with a menu, and lets them open it.
namespace AccessibleBar
{

/// For QAccessible::installFactory(): null for everything that is no ComboMenuBar.
QAccessibleInterface *create(const QString &className, QObject *object);

} // namespace AccessibleBar
