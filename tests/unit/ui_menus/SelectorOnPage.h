#pragma once

#include "mapping/ZRButtonMap.h"
#include "tests/unit/ui_menus/PopUp.h"
#include "ui/ComboMapping.h"

#include <QList>
#include <QMenu>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

// Texts of the selector's menu.
inline const QString setText = QStringLiteral("Set");
inline const QString deleteText = QStringLiteral("Delete");
inline const QString examples = QStringLiteral("Examples");
inline const QString custom = QStringLiteral("Custom");

/// Empty mappings without a parent.
inline QList<ZRButtonMap *> maps(const QStringList &names)
{
    QList<ZRButtonMap *> list;
    for (const QString &name : names) {
        list.append(new ZRButtonMap(name));
    }
    return list;
}

/// The selector of mappings, as the user sees and works it.
class SelectorOnPage
{
protected:
    void begin()
    {
        m_page = std::make_unique<QWidget>();
        m_page->resize(900, 650);
        m_selector = new ComboMapping(m_page.get());
        m_page->show();
    }
    void end() { m_page.reset(); }

    /// The menu has no parent: it is only to be had while it is open.
    void openMenu(const std::function<void(QMenu &)> &look)
    {
        PopUp::whenOpen([look] { look(*PopUp::active()); });
        m_selector->dislayMenu();
    }

    /// Each mapping as "name: entries".
    QStringList entriesOf(const QString &submenu)
    {
        QStringList list;
        openMenu([&](QMenu &top) {
            const QList<QAction *> actions = PopUp::submenu(top, submenu)->actions();
            for (QAction *action : actions) {
                if (action->menu()) {
                    Q_EMIT action->menu()->aboutToShow();
                }
                if (action->isSeparator() || action->menu() == nullptr) {
                    list.append(action->isSeparator() ? QStringLiteral("-") : action->text());
                    continue;
                }
                list.append(action->text() + QLatin1String(": ") +
                            PopUp::texts(*action->menu()).join(QLatin1Char(' ')));
            }
        });
        return list;
    }

    std::unique_ptr<QWidget> m_page;
    ComboMapping *m_selector = nullptr;
};
