#pragma once

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QStringList>
#include <QTest>
#include <QTimer>

#include <functional>

/// What a test does with a menu that runs modally.
namespace PopUp
{

inline QMenu *active()
{
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

/// The entry with this text; with several, the one at @p nth.
inline QAction *entry(const QMenu &menu, const QString &text, int nth = 0)
{
    const QList<QAction *> actions = menu.actions();
    for (QAction *action : actions) {
        if (action->text() == text && nth-- == 0) {
            return action;
        }
    }
    return nullptr;
}

/// The submenu of the entry with this text, as it is when it is opened.
inline QMenu *submenu(const QMenu &menu, const QString &text)
{
    QMenu *found = entry(menu, text)->menu();
    Q_EMIT found->aboutToShow();
    return found;
}

/// The texts of a menu, "-" for a line and "- heading" for one with a text.
inline QStringList texts(const QMenu &menu)
{
    QStringList list;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        if (!action->isSeparator()) {
            list.append(action->text());
        } else {
            list.append(action->text().isEmpty() ? QStringLiteral("-")
                                                 : QStringLiteral("- ") + action->text());
        }
    }
    return list;
}

/// Once a menu is open, runs @p then; closes whatever is open after it.
inline void whenOpen(const std::function<void()> &then)
{
    QTimer::singleShot(0, [then] {
        QVERIFY(active());
        then();
        while (QWidget *popup = QApplication::activePopupWidget()) {
            popup->close();
        }
    });
}

/// Goes through the open menu to the entry at @p path, with the keys of the keyboard, and chooses it.
inline void choose(const QStringList &path)
{
    for (int i = 0; i < path.size(); ++i) {
        QMenu *menu = active();
        QVERIFY(menu);
        QAction *next = entry(*menu, path.at(i));
        QVERIFY2(next, qPrintable(path.at(i)));
        menu->setActiveAction(next);
        QTest::keyClick(menu, i + 1 < path.size() ? Qt::Key_Right : Qt::Key_Return);
    }
}

/// Chooses the entry at @p path once a menu is open.
inline void chooseWhenOpen(const QStringList &path)
{
    whenOpen([path] { choose(path); });
}

} // namespace PopUp
