#include "ui/ComboMenuBar.h"

#include "app/frame/AccessibleButton.h"
#include "app/frame/FocusFrame.h"
#include "app/frame/Look.h"
#include "ui/ControlTip.h"

#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

namespace
{

constexpr qreal dimmedOpacity = 0.5;

// The page's ground would reach into the pictures' transparent parts.
const QLatin1String ownStyle("QLabel { background-color: transparent; }");

} // namespace

ComboMenuBar::ComboMenuBar(const QSize &size, QWidget *parent)
    : QWidget(parent)
    , m_focusFrame(new FocusFrame(this))
    , m_dimming(new QGraphicsOpacityEffect(this))
{
    resize(size);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setStyleSheet(ownStyle + ControlTip::sheet());
    new AccessibleButton(this, QAccessible::ButtonMenu, [this] { dislayMenu(); });

    m_dimming->setOpacity(dimmedOpacity);
    m_dimming->setEnabled(false);
    setGraphicsEffect(m_dimming);

    m_style.applyTo(m_menu);
}

ComboMenuBar::~ComboMenuBar() = default;

void ComboMenuBar::addPicture(const QRect &place, const QString &style)
{
    Look::addPicture(this, place, style);
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
    Q_EMIT choosing(true);
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
        Q_EMIT choosing(false);
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

// The page slides away under an open menu when the device is unplugged.
void ComboMenuBar::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_menu.close();
}
