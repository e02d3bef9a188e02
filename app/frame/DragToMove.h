#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>

class QWidget;

/// Lets a window without a frame be moved: a drag that begins on a widget, where nothing on it takes the
/// mouse, moves the widget's window.
class DragToMove : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DragToMove)

public:
    /// @p handle, which may be the window itself, owns this object.
    explicit DragToMove(QWidget *handle);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void begin(const QPoint &pointer);
    void moveTo(const QPoint &pointer);

    enum class Drag { None, Pressed, OurOwn };

    QWidget *m_handle;
    Drag m_drag = Drag::None;
    QPoint m_pressed; // where the pointer was, on the screen
    QPoint m_place;   // and the window
};
