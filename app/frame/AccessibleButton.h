#pragma once

#include <QAccessible>
#include <QObject>

#include <functional>

class QWidget;

/// Tells screen readers that a widget is a button, and lets them press it. What lies on the widget is part of
/// its looks and is not told.
class AccessibleButton : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AccessibleButton)

public:
    /// @p widget owns this object. With @p role ButtonMenu, pressing is opening the menu. @p press is called
    /// from the event loop: who asks for it waits for an answer, and a press may open what runs until it is
    /// closed.
    AccessibleButton(QWidget *widget, QAccessible::Role role, std::function<void()> press);

    QAccessible::Role role() const { return m_role; }
    void pressLater();

private:
    const QAccessible::Role m_role;
    const std::function<void()> m_press;
};
