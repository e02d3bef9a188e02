#include "ui/ComboMenuLabel.h"

#include "app/frame/ActionLabels.h"

#include <QFontMetrics>
#include <QPainter>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace
{

const QLatin1String bar(ActionLabels::separator);

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
    const QFontMetrics metrics(font());
    const int room = contentsRect().width();
    if (m_parts.isEmpty() || metrics.horizontalAdvance(text()) <= room) {
        return text();
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
        part = metrics.elidedText(part, Qt::ElideRight, std::max(left / (order.size() - i), 0));
        left -= metrics.horizontalAdvance(part);
    }
    return shown.join(bar);
}

void ComboMenuLabel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event); // NOLINT(bugprone-parent-virtual-call): the ground, and not the text
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shownText());
}
