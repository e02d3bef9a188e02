#pragma once

#include <QObject>

class KnobSettings;
class QSlider;
class QWidget;

/// The page's two sliders for the knob's sensitivity, in Normal and in Shift 1.
class SensitivitySliders : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SensitivitySliders)

public:
    /// They are @p page's, as is this object. They stand at values of their own until showStored().
    explicit SensitivitySliders(QWidget *page);

    /// Moves them to what is stored. Whoever follows them stores what they then show.
    void showStored(const KnobSettings &settings);

    QSlider *normal() const { return m_normal; }
    QSlider *shift1() const { return m_shift1; }

private:
    QSlider *m_normal;
    QSlider *m_shift1;
};
