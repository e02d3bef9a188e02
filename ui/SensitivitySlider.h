#pragma once

#include <QSlider>

/// A horizontal slider in the colours of the page, white in several alphas, so that it is seen on the page's
/// violet and on the printed sheet's ground alike. It has tick marks below. A click counts on all of its
/// height; Home goes to its left end and End to its right one, whichever value lies there.
class SensitivitySlider : public QSlider
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SensitivitySlider)

public:
    explicit SensitivitySlider(QWidget *parent = nullptr);
    ~SensitivitySlider() override = default;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
