#include "ui/ActionMenus.h"

#include "mapping/MappingSession.h"
#include "ui/ComboMenu.h"

#include <utility>

ActionMenus::ActionMenus(MappingSession &session, QObject *deviceLink, QWidget *page, Settings &settings)
    : QObject(page)
    , m_session(session)
    , m_menus(ActionTable::controlCount)
{
    constexpr int rows = ActionTable::controlCount / 2;
    for (int row = 0; row < rows; ++row) {
        add(row, {88, 239 + 47 * row, 160, 41}, deviceLink, page, settings);
        add(row + rows, {650, 239 + 47 * row, 160, 41}, deviceLink, page, settings);
    }
    connect(&session, &MappingSession::assigned, this, &ActionMenus::show);
    connect(&session, &MappingSession::replaced, this, &ActionMenus::showAll);
}

void ActionMenus::upgrade(Settings &settings)
{
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        ComboMenuSettings(settings, control).upgrade();
    }
}

void ActionMenus::add(int control, const QRect &place, QObject *deviceLink, QWidget *page, Settings &settings)
{
    auto *menu = new ComboMenu(control, deviceLink, page, settings);
    menu->setGeometry(place);
    connect(menu, &ComboMenu::onActionChanged, this, &ActionMenus::onActionChanged);
    connect(menu, &ComboMenu::assignmentChanged, this,
            [this, control](const QMap<Layer, shortCut> &layers, int edit) {
                m_session.assign(control, layers, edit);
            });
    m_menus[control] = menu;
}

// The menu in which the user chose shows it already.
void ActionMenus::show(int control, Layer layer)
{
    ComboMenu *menu = m_menus.at(control);
    const shortCut &action = m_session.action(control, layer);
    if (menu->assignment(layer) != action) {
        menu->setAssignment(layer, action);
    }
}

// The settings hold one mapping, the one for all programs, and hold it still when that is in use again.
void ActionMenus::showAll()
{
    const bool general = m_session.isGeneral();
    const bool stored = std::exchange(m_shownGeneral, general) && general;
    int control = 0;
    for (ComboMenu *menu : qAsConst(m_menus)) {
        menu->setStoring(stored);
        for (const Layer layer : Layers::all) {
            menu->setAssignment(layer, m_session.action(control, layer));
        }
        menu->setStoring(general);
        ++control;
    }
}
