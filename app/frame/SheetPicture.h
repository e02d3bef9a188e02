#pragma once

#include <QPixmap>

class QPainter;
class QWidget;

/// What a widget's style sheet paints, made to measure where a screen's scale is no whole number.
///
/// Pictures come in one and in two times their size. The toolkit shows anything between by leaving out pixels
/// of the larger one: edges become jagged, and of two equal lines one may be twice as wide. Here each pixel
/// is the mean of what lies below it, worked out once per scale.
class SheetPicture
{
public:
    /// Paints what the sheets say of @p widget, with its ground. @p painter paints on the widget.
    void draw(QPainter &painter, const QWidget &widget);

    /// To be called when a style sheet that reaches the widget has changed.
    void forget() { m_made = QPixmap(); }

private:
    QPixmap m_made; // for one scale; null before the first
};
