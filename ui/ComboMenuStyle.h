#pragma once

#include <QFont>
#include <QPalette>
#include <QProxyStyle>

class QMenu;

/// How the pop-up menus look, the same on every desktop: light, with the program's colour under the entry
/// that is chosen, headings in their sections, and a list that scrolls where it is longer than the screen.
///
/// A style and not a style sheet: with a sheet, the entries of a long menu take more than twice as long to
/// open.
class ComboMenuStyle : public QProxyStyle
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ComboMenuStyle)

public:
    ComboMenuStyle();

    /// Makes @p menu look like this. This object must outlive it.
    void applyTo(QMenu &menu);

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;

private:
    const QPalette m_palette;
    const QPalette m_chosenPalette; // of the arrow of the entry that is chosen
    const QFont m_font;
};
