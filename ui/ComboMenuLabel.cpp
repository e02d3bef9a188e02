#include "ui/ComboMenuLabel.h"

#include "app/frame/ActionLabels.h"
#include "app/frame/Look.h"
#include "ui/KeyNames.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace
{

const QLatin1String bar(ActionLabels::separator);

QString fitted(const QString &part, const QFontMetrics &metrics, int room)
{
    if (metrics.horizontalAdvance(part) <= room) {
        return part;
    }
    const QStringList shorter = KeyNames::shorter(part);
    for (const QString &each : shorter) {
        if (metrics.horizontalAdvance(each) <= room) {
            return each;
        }
    }
    return shorter.isEmpty() ? metrics.elidedText(part, Qt::ElideRight, room)
                             : metrics.elidedText(shorter.last(), Qt::ElideLeft, room);
}

QString withoutBlanks(QString text)
{
    return text.remove(QLatin1Char(' '));
}

} // namespace

ComboMenuLabel::ComboMenuLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void ComboMenuLabel::setParts(const QStringList &parts)
{
    m_parts = parts;
    setText(parts.join(bar));
}

QString ComboMenuLabel::shownText() const
{
    return shownParts().join(bar);
}

QVector<int> ComboMenuLabel::cutParts() const
{
    const QStringList shown = shownParts();
    QVector<int> cut;
    for (int i = 0; i < shown.size(); ++i) {
        if (withoutBlanks(shown.at(i)) != withoutBlanks(m_parts.at(i))) {
            cut << i;
        }
    }
    return cut;
}

QStringList ComboMenuLabel::shownParts() const
{
    const QFontMetrics metrics(font());
    const int room = contentsRect().width();
    if (m_parts.isEmpty() || metrics.horizontalAdvance(text()) <= room) {
        return m_parts;
    }
    int left = room - metrics.horizontalAdvance(bar) * (m_parts.size() - 1);
    // The shortest first: what one does not need of its share goes to the longer ones.
    QVector<int> order(m_parts.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return metrics.horizontalAdvance(m_parts.at(a)) < metrics.horizontalAdvance(m_parts.at(b));
    });
    QStringList shown = m_parts;
    for (int i = 0; i < order.size(); ++i) {
        QString &part = shown[order.at(i)];
        part = fitted(part, metrics, std::max(left / (order.size() - i), 0));
        left -= metrics.horizontalAdvance(part);
    }
    return shown;
}

void ComboMenuLabel::setStandingOut(int index)
{
    if (m_standingOut != index) {
        m_standingOut = index;
        update();
    }
}

void ComboMenuLabel::paintEvent(QPaintEvent *event)
{
    // The ground, and not the text.
    QFrame::paintEvent(event); // NOLINT(bugprone-parent-virtual-call) clazy:exclude=skipped-base-method
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shownText());

    const QStringList shown = shownParts();
    if (m_standingOut < 0 || m_standingOut >= shown.size() || shown.at(m_standingOut).isEmpty()) {
        return;
    }
    const QFontMetrics metrics(font());
    const QString before = (shown.mid(0, m_standingOut) + QStringList(QString())).join(bar);
    const QString &part = shown.at(m_standingOut);
    QRect place = contentsRect();
    place.setLeft(place.left() + metrics.horizontalAdvance(m_standingOut > 0 ? before : QString()));
    place.setWidth(metrics.horizontalAdvance(part));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(place).adjusted(-1, 2, 1, -2), 3, 3);
    painter.setPen(Look::accent);
    painter.drawText(place, static_cast<int>(alignment()) | Qt::TextSingleLine, part);
}
