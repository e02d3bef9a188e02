#include "ui/BoxMarks.h"

#include "ui/ComboMenu.h"

#include <QEvent>

BoxMarks::BoxMarks(const ActionMenus::Menus &menus, QWidget *page)
    : QObject(page)
    , m_menus(menus)
    , m_page(page)
{
    connect(&m_nextFrame, &QTimer::timeout, this, &BoxMarks::showNow);
    page->installEventFilter(this);
}

void BoxMarks::setHeld(int control, bool held)
{
    m_held[control] = held;
    showLater();
}

void BoxMarks::setLayer(Layer layer)
{
    m_layer = layer;
    showLater();
}

void BoxMarks::showLater()
{
    if (m_page->isVisible()) {
        m_nextFrame.request();
    }
}

bool BoxMarks::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        showNow(); // what came and went meanwhile was not shown
    }
    return QObject::eventFilter(watched, event);
}

void BoxMarks::showNow()
{
    for (ComboMenu *menu : m_menus) {
        menu->setPressed(m_held[menu->id()]);
        menu->setHeldLayer(m_layer);
    }
}
