#pragma once

#include <QAbstractButton>

namespace simulator
{

/// A switch with its text beside it; used like a check box.
class ToggleSwitch : public QAbstractButton
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ToggleSwitch)

public:
    explicit ToggleSwitch(const QString &text, QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace simulator
