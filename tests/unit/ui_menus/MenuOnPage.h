#pragma once

#include "mapping/SpecialAction.h"
#include "tests/unit/ui_menus/MenuRig.h"
#include "tests/unit/ui_menus/PopUp.h"
#include "ui/ComboMenuLabel.h"

#include <QStringList>

#include <memory>

// The titles of the menu's layers.
inline const QString normal = QStringLiteral("Normal");
inline const QString shift1 = QStringLiteral("Shift 1");
inline const QString shift2 = QStringLiteral("Shift 2");

inline shortCut keys(int key1, int key2, const QString &label)
{
    return shortCut{key1, key2, -1, label};
}

inline shortCut special(SpecialAction action, const QString &label)
{
    return keys(SPECIAL_ACTION, static_cast<int>(action), label);
}

/// The action menu of control 3, as the user sees and works it.
class MenuOnPage
{
protected:
    void begin() { m_rig = std::make_unique<MenuRig>(); }
    void end() { m_rig.reset(); }
    void chooseFrom(const QStringList &path)
    {
        PopUp::chooseWhenOpen(path);
        m_rig->menu().dislayMenu();
    }
    ComboMenuLabel *title() { return m_rig->menu().findChildren<ComboMenuLabel *>().at(0); }
    ComboMenuLabel *layers() { return m_rig->menu().findChildren<ComboMenuLabel *>().at(1); }

    std::unique_ptr<MenuRig> m_rig;
};
