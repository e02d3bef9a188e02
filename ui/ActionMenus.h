#pragma once

#include "mapping/ZRButtonMap.h"

#include <QObject>
#include <QStringList>

#include <array>
#include <memory>

class ComboMenu;
class Settings;

/// The ten action menus as one: together they hold the mapping that the page shows.
class ActionMenus : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ActionMenus)

public:
    using Menus = std::array<ComboMenu *, ZRButtonMap::buttonCount>;

    /// The menus are @p page's, as is this object. They hold what @p settings do. See ComboMenu for
    /// @p deviceLink.
    ActionMenus(QObject *deviceLink, QWidget *page, Settings &settings);

    /// Brings the assignments that an older version stored into today's form; for before the menus are made.
    static void upgrade(Settings &settings);

    const Menus &menus() const { return m_menus; }

    /// What the menus hold.
    std::unique_ptr<ZRButtonMap> mapNamed(const QString &name) const;

    /// Makes the menus hold what @p map does. Sends nothing.
    void load(const ZRButtonMap &map);

    /// Whether the menus hold what @p map does, whatever its name.
    bool hold(const ZRButtonMap &map) const;

    /// What each control does in its layers, in plain words: a line per layer.
    QStringList inWords() const;

Q_SIGNALS:
    /// See ComboMenu::onActionChanged().
    void onActionChanged();

    /// The assignment of one control in one layer has changed.
    void assignmentChanged(int control, int layer, const shortCut &assignment);

private:
    void add(int control, const QRect &place, QObject *deviceLink, QWidget *page, Settings &settings);

    Menus m_menus{};
    bool m_loading = false;
};
