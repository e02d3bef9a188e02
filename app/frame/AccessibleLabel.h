#pragma once

class QAccessibleInterface;
class QObject;
class QString;

/// Tells screen readers that a ClickableLabel is a button, and lets them press it.
namespace AccessibleLabel
{

/// For QAccessible::installFactory(): null for everything that is no ClickableLabel.
QAccessibleInterface *create(const QString &className, QObject *object);

} // namespace AccessibleLabel
