#pragma once

#include "mapping/ActionTable.h"

#include <QObject>
#include <QVector>

class ComboMenu;
class MappingSession;
class Settings;

/// The ten action menus: they show what the session's mapping says, and hand on to it what the user chooses.
class ActionMenus : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ActionMenus)

public:
    using Menus = QVector<ComboMenu *>; ///< in the order of the controls

    /// The menus are @p page's, as is this object. They show what @p settings hold, until the session says
    /// otherwise. See ComboMenu for @p deviceLink. Both references must outlive this object.
    ActionMenus(MappingSession &session, QObject *deviceLink, QWidget *page, Settings &settings);

    /// Brings the assignments that an older version stored into today's form; for before the menus are made.
    static void upgrade(Settings &settings);

    const Menus &menus() const { return m_menus; }

Q_SIGNALS:
    /// See ComboMenu::onActionChanged(). The session has the change by then.
    void onActionChanged();

private:
    void add(int control, const QRect &place, QObject *deviceLink, QWidget *page, Settings &settings);
    void show(int control, Layer layer);
    void showAll();

    MappingSession &m_session;
    Menus m_menus;
    bool m_shownGeneral = true; // at the last showAll()
};
