#include "ui/AccessibleBar.h"

#include "ui/ComboMenuBar.h"

#include <QAccessibleWidget>

namespace
{

class Bar final : public QAccessibleWidget
{
public:
    explicit Bar(ComboMenuBar *bar)
        : QAccessibleWidget(bar, QAccessible::ButtonMenu)
        , m_bar(bar)
    {
    }

    // The labels on it say the same as the description does.
    int childCount() const override { return 0; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = true;
        return state;
    }

    QStringList actionNames() const override
    {
        return QStringList{showMenuAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name == showMenuAction()) {
            // Who asks for it waits for an answer, and the menu runs until it is closed.
            QMetaObject::invokeMethod(m_bar, &ComboMenuBar::dislayMenu, Qt::QueuedConnection);
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    ComboMenuBar *const m_bar; // which this object does not outlive
};

} // namespace

QAccessibleInterface *AccessibleBar::create(const QString &className, QObject *object)
{
    return className == QLatin1String("ComboMenuBar") ? new Bar(static_cast<ComboMenuBar *>(object))
                                                      : nullptr;
}
