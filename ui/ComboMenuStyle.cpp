#include "ui/ComboMenuStyle.h"

#include "app/frame/Look.h"

#include <QMenu>
#include <QPainter>
#include <QStyleOptionMenuItem>

namespace
{

using Look::accent;
using Look::ink;

constexpr QColor faintInk(0x70, 0x70, 0x70); // to be read on white
constexpr QColor paper(0xff, 0xff, 0xff);
constexpr QColor line(0xdd, 0xdd, 0xe4);

// The column before the entries' texts.
constexpr int markWidth = 28;

constexpr qreal headingScale = 0.85;

QPalette menuPalette()
{
    QPalette palette(ink, paper, paper, line, line, ink, ink, paper, paper);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, paper);
    palette.setColor(QPalette::Disabled, QPalette::Text, faintInk);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, faintInk);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, faintInk);
    return palette;
}

QPalette chosenPalette()
{
    QPalette palette = menuPalette();
    palette.setColor(QPalette::WindowText, paper);
    return palette;
}

void drawHeading(const QStyleOptionMenuItem &item, QPainter &painter)
{
    painter.save();
    QFont font = item.font;
    font.setPointSizeF(font.pointSizeF() * headingScale);
    font.setWeight(QFont::Bold);
    painter.setFont(font);
    painter.setPen(accent);
    painter.drawText(item.rect.adjusted(markWidth, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, item.text);
    painter.restore();
}

void drawCheckMark(const QStyleOptionMenuItem &item, QPainter &painter)
{
    const QPointF centre(item.rect.left() + markWidth / 2.0, item.rect.center().y() + 1);
    const QPointF mark[] = {centre + QPointF(-4.5, 0), centre + QPointF(-1.5, 3.5), centre + QPointF(5, -4)};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen((item.state & QStyle::State_Selected) ? paper : accent, 2, Qt::SolidLine,
                        Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(mark, 3);
    painter.restore();
}

} // namespace

ComboMenuStyle::ComboMenuStyle()
    : QProxyStyle(QStringLiteral("Fusion"))
    , m_palette(menuPalette())
    , m_chosenPalette(chosenPalette())
    , m_font(Look::font(Look::Face::Menu, 10))
{
}

void ComboMenuStyle::applyTo(QMenu &menu)
{
    menu.setStyle(this);
    menu.setPalette(m_palette);
    menu.setFont(m_font);
}

int ComboMenuStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                              QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_Menu_Scrollable:
    case SH_Menu_SupportsSections:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

void ComboMenuStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (element != CE_MenuItem || !item) {
        QProxyStyle::drawControl(element, option, painter, widget);
    } else if (item->menuItemType == QStyleOptionMenuItem::Separator && !item->text.isEmpty()) {
        drawHeading(*item, *painter);
    } else {
        // A mark where there is one to be seen, and no empty boxes.
        QStyleOptionMenuItem unmarked(*item);
        unmarked.checkType = QStyleOptionMenuItem::NotCheckable;
        QProxyStyle::drawControl(element, &unmarked, painter, widget);
        if (item->checked && item->checkType != QStyleOptionMenuItem::NotCheckable) {
            drawCheckMark(*item, *painter);
        }
    }
}

void ComboMenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                   const QWidget *widget) const
{
    if ((element == PE_IndicatorArrowRight || element == PE_IndicatorArrowLeft) &&
        option->palette.color(QPalette::WindowText) == paper) {
        // Fusion makes this palette anew at each painting, and keeps the arrow's picture under the palette's
        // number: the pictures would fill the cache, and none would ever be found again.
        QStyleOption arrow(*option);
        arrow.palette = m_chosenPalette;
        QProxyStyle::drawPrimitive(element, &arrow, painter, widget);
    } else {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}
