#include "app/frame/AccessibleButton.h"

#include <QAccessibleWidget>
#include <QWidget>

#include <utility>

namespace
{

class Interface final : public QAccessibleWidget
{
public:
    Interface(QWidget *widget, AccessibleButton *button)
        : QAccessibleWidget(widget, button->role())
        , m_button(button)
    {
    }

    int childCount() const override { return 0; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = m_button->role() == QAccessible::ButtonMenu;
        return state;
    }

    QStringList actionNames() const override
    {
        return QStringList{action()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name == action()) {
            m_button->pressLater();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    const QString &action() const
    {
        return m_button->role() == QAccessible::ButtonMenu ? showMenuAction() : pressAction();
    }

    AccessibleButton *const m_button; // the widget's, which this object does not outlive
};

QAccessibleInterface *create(const QString & /*className*/, QObject *object)
{
    if (object == nullptr || !object->isWidgetType()) {
        return nullptr;
    }
    auto *button = object->findChild<AccessibleButton *>(QString(), Qt::FindDirectChildrenOnly);
    return button != nullptr ? new Interface(static_cast<QWidget *>(object), button) : nullptr;
}

} // namespace

AccessibleButton::AccessibleButton(QWidget *widget, QAccessible::Role role, std::function<void()> press)
    : QObject(widget)
    , m_role(role)
    , m_press(std::move(press))
{
    static const bool told = (QAccessible::installFactory(&create), true);
    Q_UNUSED(told)
}

void AccessibleButton::pressLater()
{
    QMetaObject::invokeMethod(this, m_press, Qt::QueuedConnection);
}
