#include "ui/ControlTip.h"

#include "ui/ComboMenu.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace
{

/// Shows the tool tips of widgets that are not its own.
class TipHost : public QWidget
{
    Q_DISABLE_COPY_MOVE(TipHost)

public:
    explicit TipHost(QWidget *page)
        : QWidget(page)
    {
        setObjectName(QStringLiteral("tipHost"));
        setStyleSheet(ControlTip::sheet());
        hide();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *widget = static_cast<const QWidget *>(watched);
        if (event->type() == QEvent::ToolTip && !widget->toolTip().isEmpty()) {
            QToolTip::showText(static_cast<const QHelpEvent *>(event)->globalPos(), widget->toolTip(), this);
            return true;
        }
        return QWidget::eventFilter(watched, event);
    }
};

} // namespace

QString ControlTip::name(int control)
{
    return control < 0 ? ComboMenu::tr("Knob") : ComboMenu::tr("Button %1").arg(control);
}

QString ControlTip::text(const QString &name, const QStringList &lines, const QString &hint)
{
    QString words = QStringLiteral("<b>%1</b>").arg(name.toHtmlEscaped());
    for (const QString &line : lines) {
        words += QLatin1String("<br>") + line.toHtmlEscaped();
    }
    return hint.isEmpty() ? words : words + QStringLiteral("<br><i>%1</i>").arg(hint.toHtmlEscaped());
}

QString ControlTip::sheet()
{
    return QStringLiteral("QToolTip { color: #2d2d2d; background-color: white; border: 1px solid #bdbdc9;"
                          "padding: 4px; font: 10pt \"Source Sans Pro\"; }");
}

QWidget *ControlTip::install(QWidget *page)
{
    auto *host = new TipHost(page);
    const QList<QWidget *> children = page->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (qobject_cast<ComboMenuBar *>(child) == nullptr) {
            child->installEventFilter(host);
        }
    }
    return host;
}
