#pragma once

#include <QSlider>

/// A horizontal slider in the colours of the page, white in several alphas, so that it is seen on the page's
/// violet and on the printed sheet's ground alike. It has tick marks below, and behaves as any slider.
class SensitivitySlider : public QSlider
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SensitivitySlider)

public:
    explicit SensitivitySlider(QWidget *parent = nullptr);
    ~SensitivitySlider() override = default;

protected:
    void paintEvent(QPaintEvent *event) override;
};
