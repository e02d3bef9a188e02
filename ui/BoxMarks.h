#pragma once

#include "mapping/Layer.h"
#include "mapping/PerControl.h"
#include "ui/ActionMenus.h"
#include "ui/FrameTimer.h"

#include <QObject>

/// Has the ten boxes show which layer is held and whose control is pressed: after the event has been acted
/// on, and up to once a frame. A hidden page costs nothing.
class BoxMarks : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BoxMarks)

public:
    /// @p page owns this object and the menus.
    BoxMarks(const ActionMenus::Menus &menus, QWidget *page);

public Q_SLOTS:
    void setHeld(int control, bool held); ///< @p control is 0 to 9
    void setLayer(Layer layer);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showLater();
    void showNow();

    const ActionMenus::Menus m_menus;
    QWidget *m_page;
    PerControl<bool> m_held;
    Layer m_layer = Layer::Normal;
    FrameTimer m_nextFrame;
};
