#include "app/frame/FocusFrame.h"

#include <QFocusEvent>
#include <QPainter>

namespace
{

constexpr qreal thickness = 2;
constexpr qreal radius = 4;

} // namespace

FocusFrame::FocusFrame(QWidget *button)
    : QWidget(button)
{
    setObjectName(QStringLiteral("focus"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(button->rect());
    hide();
    button->installEventFilter(this);
}

bool FocusFrame::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn: {
        // Qt gives the first button the focus when the window is activated: the frame is for who moves it.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        m_byKeyboard = m_byKeyboard || reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                       reason == Qt::ShortcutFocusReason;
        setVisible(m_byKeyboard);
        break;
    }
    case QEvent::FocusOut: {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        m_byKeyboard =
            m_byKeyboard && (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason);
        hide();
        break;
    }
    case QEvent::Resize:
        setGeometry(parentWidget()->rect());
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void FocusFrame::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_colour, thickness));
    constexpr qreal inset = thickness / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}
