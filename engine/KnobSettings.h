#pragma once

#include "mapping/Layer.h"

#include <QtGlobal>

class Settings;

/// How slowly the knob's counts turn into steps: a divisor for the Normal layer and one for Shift 1, each 1
/// to 100, kept in the user's settings under "Slider.Normal" and "Slider.Shift1".
class KnobSettings
{
    Q_DISABLE_COPY_MOVE(KnobSettings)

public:
    static constexpr int minimum = 1;
    static constexpr int maximum = 100;

    /// Reads the stored values. What is missing or no number counts as 0, and what is out of range as the
    /// nearest value: on a first start both are 1, on purpose. @p settings must outlive this object.
    explicit KnobSettings(Settings &settings);

    int sensitivityNormal() const { return m_normal; }
    int sensitivityShift1() const { return m_shift1; }

    /// The divisor for counts in this layer: Shift 1's in Shift 1, Normal's in the others.
    int sensitivity(Layer layer) const { return layer == Layer::Shift1 ? m_shift1 : m_normal; }

    /// Stored as given and written to the disk at once. A failure shows in the settings' writtenChanged().
    void setKnobSensitivityNormal(int val);
    void setKnobSensitivityShift1(int val);

private:
    Settings &m_settings;
    int m_normal;
    int m_shift1;
};
