#include "ui/ActionMenus.h"

#include "ui/ComboMenu.h"

ActionMenus::ActionMenus(QObject *deviceLink, QWidget *page, Settings &settings)
    : QObject(page)
{
    constexpr int rows = ZRButtonMap::buttonCount / 2;
    for (int row = 0; row < rows; ++row) {
        add(row, {88, 239 + 47 * row, 160, 41}, deviceLink, page, settings);
        add(row + rows, {650, 239 + 47 * row, 160, 41}, deviceLink, page, settings);
    }
}

void ActionMenus::upgrade(Settings &settings)
{
    for (int control = 0; control < ZRButtonMap::buttonCount; ++control) {
        ComboMenuSettings(settings, control).upgrade();
    }
}

void ActionMenus::add(int control, const QRect &place, QObject *deviceLink, QWidget *page, Settings &settings)
{
    auto *menu = new ComboMenu(control, deviceLink, page, settings);
    menu->setGeometry(place);
    connect(menu, &ComboMenu::onActionChanged, this, &ActionMenus::onActionChanged);
    connect(menu, &ComboMenu::assignmentChanged, this,
            [this, control](int layer, const shortCut &assignment) {
                if (!m_loading) {
                    Q_EMIT assignmentChanged(control, layer, assignment);
                }
            });
    m_menus.at(static_cast<std::size_t>(control)) = menu;
}

std::unique_ptr<ZRButtonMap> ActionMenus::mapNamed(const QString &name) const
{
    auto map = std::make_unique<ZRButtonMap>(name);
    for (std::size_t control = 0; control < m_menus.size(); ++control) {
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            map->actions[control][layer] = m_menus[control]->assignment(layer); // all fields, the knob's too
        }
    }
    return map;
}

void ActionMenus::load(const ZRButtonMap &map)
{
    m_loading = true;
    for (std::size_t control = 0; control < m_menus.size(); ++control) {
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            m_menus[control]->getShorcut(layer, map.actions[control][layer]);
        }
    }
    m_loading = false;
}

bool ActionMenus::hold(const ZRButtonMap &map) const
{
    for (std::size_t control = 0; control < m_menus.size(); ++control) {
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            if (!(m_menus[control]->assignment(layer) == map.actions[control][layer])) {
                return false;
            }
        }
    }
    return true;
}

QStringList ActionMenus::inWords() const
{
    const QString layers[] = {tr("Normal"), tr("Shift 1"), tr("Shift 2")};
    QStringList texts;
    for (const ComboMenu *menu : m_menus) {
        QStringList lines;
        for (int layer = 0; layer < ZRButtonMap::layerCount; ++layer) {
            lines << tr("%1: %2").arg(layers[layer], menu->inWords(layer));
        }
        texts << lines.join(QLatin1Char('\n'));
    }
    return texts;
}
