#include "ui/SensitivitySliders.h"

#include "engine/KnobSettings.h"
#include "ui/SensitivitySlider.h"

SensitivitySliders::SensitivitySliders(QWidget *page)
    : QObject(page)
{
    const auto add = [page](const QRect &place, int value, const QString &name) {
        auto *slider = new SensitivitySlider(page);
        slider->setGeometry(place);
        slider->setRange(KnobSettings::minimum, KnobSettings::maximum);
        slider->setInvertedAppearance(true); // the slow end, with the higher values, lies at the left
        slider->setInvertedControls(true);
        slider->setValue(value);
        slider->setAccessibleName(name);
        slider->setToolTip(tr("How far the knob has to be turned for a step"));
        return slider;
    };
    m_normal = add({362, 527, 176, 16}, 50, tr("Knob sensitivity"));
    m_shift1 = add({362, 568, 176, 16}, 70, tr("Knob sensitivity in Shift 1"));
}

void SensitivitySliders::showStored(const KnobSettings &settings)
{
    m_normal->setValue(settings.sensitivityNormal());
    m_shift1->setValue(settings.sensitivityShift1());
}
