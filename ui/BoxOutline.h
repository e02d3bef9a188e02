#pragma once

#include <QWidget>

/// The outline of a box whose control is pressed, drawn over it. Hidden at first.
class BoxOutline : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(BoxOutline)

public:
    /// Lies over all of @p box, which owns it.
    explicit BoxOutline(QWidget *box);

protected:
    void paintEvent(QPaintEvent *event) override;
};
