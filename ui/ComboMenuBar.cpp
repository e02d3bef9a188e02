#include "ui/ComboMenuBar.h"

#include "ui/AccessibleBar.h"

#include <QAccessible>
#include <QFrame>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>

namespace
{

constexpr qreal dimmedOpacity = 0.5;

const QLatin1String focusStyle("background-color: rgba(0,0,0,0); border: 2px solid rgba(255,255,255,0.87);"
                               "border-radius: 5px;");

// The page's ground would reach into a tool tip, under black letters, and into the pictures' transparent
// parts.
const QLatin1String ownStyle("QLabel { background-color: transparent; }"
                             "QToolTip { color: #2d2d2d; background-color: white; border: 1px solid #bdbdc9;"
                             "padding: 4px; font: 10pt \"Source Sans Pro\"; }");

} // namespace

ComboMenuBar::ComboMenuBar(const QSize &size, QWidget *parent)
    : QWidget(parent)
    , m_focusFrame(new QFrame(this))
    , m_dimming(new QGraphicsOpacityEffect(this))
{
    static const bool told = (QAccessible::installFactory(&AccessibleBar::create), true);
    Q_UNUSED(told)
    resize(size);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setStyleSheet(ownStyle);

    m_focusFrame->setObjectName(QStringLiteral("focus"));
    m_focusFrame->setGeometry(rect());
    m_focusFrame->setStyleSheet(focusStyle);
    m_focusFrame->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_focusFrame->hide();

    m_dimming->setOpacity(dimmedOpacity);
    m_dimming->setEnabled(false);
    setGraphicsEffect(m_dimming);

    m_style.applyTo(m_menu);
}

ComboMenuBar::~ComboMenuBar() = default;

void ComboMenuBar::addPicture(const QRect &place, const QString &style)
{
    auto *label = new QLabel(this);
    label->setGeometry(place);
    label->setStyleSheet(style);
}

void ComboMenuBar::finishLook()
{
    m_focusFrame->raise();
}

void ComboMenuBar::runMenu(const QPoint &place)
{
    // A click beside the open menu closes it, and may then arrive here.
    if (m_menuOpen) {
        return;
    }
    m_menuOpen = true;
    m_dimming->setEnabled(true);
    const QPointer<ComboMenuBar> self(this);
    const QAction *chosen = m_menu.exec(mapToGlobal(place));
    if (!self) {
        return;
    }
    m_dimming->setEnabled(false);
    if (chosen) {
        carryOut(*chosen);
    }
    if (self) {
        m_menuOpen = false;
        menuClosed();
    }
}

void ComboMenuBar::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        dislayMenu();
    } else {
        QWidget::mousePressEvent(event);
    }
}

void ComboMenuBar::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        dislayMenu();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

// Qt gives the first bar the focus when the window is activated: the frame is for who moves it there.
void ComboMenuBar::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
        event->reason() == Qt::ShortcutFocusReason) {
        m_focusShown = true;
    }
    m_focusFrame->setVisible(m_focusShown);
}

void ComboMenuBar::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason) {
        m_focusShown = false;
    }
    m_focusFrame->hide();
}

// The page slides away under an open menu when the device is unplugged.
void ComboMenuBar::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_menu.close();
}
