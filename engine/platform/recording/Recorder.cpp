#include "engine/platform/recording/Recorder.h"

#include <QChar>
#include <QLatin1String>

#include <utility>

namespace
{

QLatin1String downOrUp(bool down)
{
    return down ? QLatin1String("down") : QLatin1String("up");
}

} // namespace

Recorder::Recorder(Sink sink)
    : m_sink(std::move(sink))
{
}

void Recorder::recordKey(quint16 virtualKey, bool down)
{
    record(QStringLiteral("key %1 %2").arg(virtualKey).arg(downOrUp(down)));
}

void Recorder::recordLeftButton(bool down)
{
    record(QStringLiteral("left %1").arg(downOrUp(down)));
}

void Recorder::recordHidden(bool hidden)
{
    record(hidden ? QStringLiteral("hide") : QStringLiteral("show"));
}

void Recorder::recordMove(QPoint position)
{
    record(QStringLiteral("move %1 %2").arg(position.x()).arg(position.y()));
}

void Recorder::recordMidi(const QByteArray &message)
{
    record(QStringLiteral("midi %1").arg(QString::fromLatin1(message.toHex(' ').toUpper())));
}

void Recorder::recordPanel(const QString &name)
{
    record(QStringLiteral("panel %1").arg(name));
}

void Recorder::recordGame(char control)
{
    record(QStringLiteral("game %1").arg(QLatin1Char(control)));
}

QStringList Recorder::takeLines()
{
    return std::exchange(m_lines, {});
}

void Recorder::record(const QString &line)
{
    if (m_sink) {
        m_sink(line);
    } else {
        m_lines.append(line);
    }
}
