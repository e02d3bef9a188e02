#include "ui/NameLine.h"

#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "ui/ComboMenuEntries.h"

namespace
{

const QLatin1String lineStyle("QLabel { color : rgba(255,255,255,0.87); background-color: rgba(0,0,0,0); }");

} // namespace

NameLine::NameLine(QWidget *page)
    : QLabel(page)
{
    setObjectName(QStringLiteral("nameLine"));
    setGeometry(place);
    setStyleSheet(lineStyle);
    setFont(Look::font(Look::Face::Page, 11));
    setAlignment(Qt::AlignCenter);
    refresh();
}

void NameLine::setMapping(const QString &name, bool changed)
{
    m_name = name;
    m_changed = changed;
    refresh();
}

void NameLine::setKnobMode(KnobMode mode)
{
    m_mode = mode;
    refresh();
}

void NameLine::refresh()
{
    const QString name = m_name.isEmpty() ? tr("Mapping without a name") : m_name;
    QString rest = m_changed ? QString::fromUtf8(" \u2022") : QString();
    QString spoken = m_changed ? tr("%1, changed").arg(name) : name;
    if (m_mode != KnobMode::Circular) {
        const QString knob = tr("Knob: %1").arg(ComboMenuEntries::knobMode(m_mode));
        rest += QString::fromUtf8("   \u00b7   ") + knob;
        spoken += QLatin1String(". ") + knob;
    }
    // The name gives way, not what follows it.
    const int room = width() - fontMetrics().horizontalAdvance(rest);
    const QString shown = fontMetrics().elidedText(name, Qt::ElideRight, room);
    const QString help =
        m_changed ? tr("The mapping in use, changed since it was chosen or saved") : tr("The mapping in use");
    FittingText::show(this, shown + rest, shown == name ? help : name + QLatin1Char('\n') + help);
    setAccessibleName(tr("Mapping in use: %1").arg(spoken));
}
