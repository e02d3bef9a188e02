#pragma once

#include <QLabel>

/// A label that reports clicks: by the mouse, by a screen reader, and by the keyboard when it takes the
/// focus.
class ClickableLabel : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ClickableLabel)

public:
    explicit ClickableLabel(QWidget *parent = nullptr);

Q_SIGNALS:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
