#pragma once

#include "device/DeviceEvent.h"

#include <QString>
#include <QStringList>

/// "button 3 down", "knob 0x44", "count -3": how expectations are written in test data.
inline QString eventText(const DeviceEvent &event)
{
    switch (event.kind) {
    case DeviceEvent::Kind::Button:
        return QStringLiteral("button %1 %2")
            .arg(event.button)
            .arg(event.pressing ? QLatin1String("down") : QLatin1String("up"));
    case DeviceEvent::Kind::KnobType:
        return QStringLiteral("knob 0x%1")
            .arg(QString::number(static_cast<uchar>(event.type), 16).toUpper(), 2, QLatin1Char('0'));
    case DeviceEvent::Kind::KnobCount:
        return QStringLiteral("count %1").arg(event.count);
    }
    return {};
}

template <typename Events>
QStringList eventTexts(const Events &events)
{
    QStringList texts;
    for (const DeviceEvent &event : events) {
        texts.append(eventText(event));
    }
    return texts;
}
