#include "app/frame/FocusFrame.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>

namespace
{

constexpr QColor white(255, 255, 255, 222);
constexpr qreal thickness = 2;
constexpr qreal radius = 4;

bool canHaveFocus(const QWidget &widget)
{
    return widget.isVisible() && widget.isEnabled();
}

void drawRing(QPainter &painter, const QRectF &around, const QColor &colour)
{
    constexpr qreal inset = thickness / 2;
    painter.setPen(QPen(colour, thickness));
    painter.drawRoundedRect(around.adjusted(inset, inset, -inset, -inset), radius, radius);
}

} // namespace

FocusFrame::FocusFrame(QWidget *button)
    : QWidget(button)
    , m_colour(white)
    , m_before(QApplication::focusWidget())
{
    setObjectName(QStringLiteral("focus"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(button->rect());
    hide();
    button->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { m_before = now; });
}

bool FocusFrame::isByKeyboard(Qt::FocusReason reason) const
{
    switch (reason) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
        // Qt also gives these when what had the focus goes, and looks for the next by itself.
        if (m_before != nullptr && !canHaveFocus(*m_before)) {
            const auto *frame =
                m_before->findChild<const FocusFrame *>(QString(), Qt::FindDirectChildrenOnly);
            return frame != nullptr && frame->m_byKeyboard;
        }
        return true;
    case Qt::ShortcutFocusReason:
        return true;
    case Qt::MouseFocusReason:
        return false;
    default:
        return m_byKeyboard;
    }
}

bool FocusFrame::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        // Qt gives the first button the focus when the window is activated: the frame is for who moves it.
        m_byKeyboard = isByKeyboard(static_cast<QFocusEvent *>(event)->reason());
        setVisible(m_byKeyboard || m_forEveryFocus);
        break;
    case QEvent::FocusOut: {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        m_byKeyboard = m_byKeyboard && (reason == Qt::ActiveWindowFocusReason ||
                                        reason == Qt::PopupFocusReason || !canHaveFocus(*parentWidget()));
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
    const QRectF all(rect());
    if (m_colour != white) {
        // Within a coloured ring a white one, or the frame would not be seen on a button of that colour.
        drawRing(painter, all.adjusted(thickness, thickness, -thickness, -thickness), white);
    }
    drawRing(painter, all, m_colour);
}
