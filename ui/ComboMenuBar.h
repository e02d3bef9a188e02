#pragma once

#include "ui/ComboMenuStyle.h"

#include <QMenu>
#include <QWidget>

class FocusFrame;
class QGraphicsOpacityEffect;

/// A bar that opens a pop-up menu: by a click, and by the keyboard when it has the focus. It is dimmed while
/// the menu is open.
class ComboMenuBar : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ComboMenuBar)

public:
    ~ComboMenuBar() override;

Q_SIGNALS:
    /// The menu opens; or it is closed, and the choice carried out.
    void choosing(bool begins);

public Q_SLOTS:
    /// Opens the menu and returns when it is closed and the choice, if any, is carried out. Does nothing
    /// while it is open.
    virtual void dislayMenu() = 0;

protected:
    ComboMenuBar(const QSize &size, QWidget *parent);

    /// Adds a label that shows a picture, or nothing but its style sheet.
    void addPicture(const QRect &place, const QString &style);

    /// Brings the frame that shows the focus above what was added.
    void finishLook();

    QMenu &menu() { return m_menu; }

    /// Makes one of the menu's submenus look like the menu.
    void applyStyle(QMenu &submenu) { m_style.applyTo(submenu); }

    /// Runs the menu at a place of the bar's, then carryOut() and menuClosed().
    void runMenu(const QPoint &place);

    /// True until a choice has been carried out.
    bool isMenuOpen() const { return m_menuOpen; }

    virtual void carryOut(const QAction &chosen) = 0;
    virtual void menuClosed() {}

    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    ComboMenuStyle m_style; // outlives the menu
    QMenu m_menu;
    FocusFrame *m_focusFrame;
    QGraphicsOpacityEffect *m_dimming;
    bool m_menuOpen = false;
};
