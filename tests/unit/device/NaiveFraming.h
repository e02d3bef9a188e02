#pragma once

#include "device/DeviceEvent.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// The framing rule written down a second time, as plainly as it can be said and without a thought about
/// speed. What LineDecoder does is compared with it.
class NaiveFraming
{
public:
    QVector<DeviceEvent> feed(const QByteArray &bytes)
    {
        const QByteArray terminator("\n\r\n");
        QVector<DeviceEvent> events;
        m_buffer += bytes;
        if (!m_buffer.contains(terminator)) {
            if (m_buffer.size() > 65536) {
                m_buffer.clear();
            }
            return events;
        }
        while (!m_buffer.isEmpty()) {
            QByteArray line = m_buffer;
            if (m_buffer.count(terminator) >= 2) {
                line = m_buffer.left(m_buffer.indexOf(terminator) + 3);
            }
            m_buffer = m_buffer.mid(line.size());
            decode(line, &events);
        }
        return events;
    }

private:
    static void decode(const QByteArray &line, QVector<DeviceEvent> *events)
    {
        if (line.startsWith("BP")) {
            events->append(DeviceEvent::buttonChanged(static_cast<uchar>(line.at(2)) - 48, true));
        } else if (line.startsWith("BR")) {
            events->append(DeviceEvent::buttonChanged(static_cast<uchar>(line.at(2)) - 48, false));
        } else if (line.startsWith("KN")) {
            events->append(DeviceEvent::knobChanged(line.at(2)));
        } else {
            QString text = QString::fromUtf8(line.constData()); // ends at the first NUL
            text.replace(QStringLiteral("\n\r\n"), QString());
            bool ok = false;
            const int count = text.toInt(&ok);
            if (ok) {
                events->append(DeviceEvent::knobCounted(count));
            }
        }
    }

    QByteArray m_buffer;
};
