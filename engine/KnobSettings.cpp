#include "engine/KnobSettings.h"

#include "engine/Settings.h"

#include <QString>
#include <QVariant>

namespace
{

const QString keyNormal = QStringLiteral("Slider.Normal");
const QString keyShift1 = QStringLiteral("Slider.Shift1");

int inRange(int value)
{
    return qBound(KnobSettings::minimum, value, KnobSettings::maximum);
}

void store(Settings &settings, const QString &key, int value)
{
    const QVariant stored = settings.value(key);
    if (stored.isNull() || stored.toInt() != value) {
        settings.setValue(key, value);
        settings.write();
    }
}

} // namespace

KnobSettings::KnobSettings(Settings &settings)
    : m_settings(settings)
    , m_normal(inRange(settings.value(keyNormal).toInt()))
    , m_shift1(inRange(settings.value(keyShift1).toInt()))
{
}

void KnobSettings::setKnobSensitivityNormal(int val)
{
    m_normal = inRange(val);
    store(m_settings, keyNormal, val);
}

void KnobSettings::setKnobSensitivityShift1(int val)
{
    m_shift1 = inRange(val);
    store(m_settings, keyShift1, val);
}
