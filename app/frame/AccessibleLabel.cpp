#include "app/frame/AccessibleLabel.h"

#include "app/frame/ClickableLabel.h"

#include <QAccessibleWidget>

namespace
{

class Button final : public QAccessibleWidget
{
public:
    explicit Button(ClickableLabel *label)
        : QAccessibleWidget(label, QAccessible::Button)
        , m_label(label)
    {
    }

    QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString &name) override
    {
        if (name == pressAction()) {
            // Who asks for it waits for an answer, and a click may open a dialog that runs until it is
            // closed.
            QMetaObject::invokeMethod(m_label, &ClickableLabel::clicked, Qt::QueuedConnection);
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    ClickableLabel *const m_label; // which this object does not outlive
};

} // namespace

QAccessibleInterface *AccessibleLabel::create(const QString &className, QObject *object)
{
    return className == QLatin1String("ClickableLabel") ? new Button(static_cast<ClickableLabel *>(object))
                                                        : nullptr;
}
