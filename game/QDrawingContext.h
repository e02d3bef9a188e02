#pragma once

#include "game/pong/DrawingContext.h"

#include <QColor>
#include <QtGlobal>

class QPainter;

/// Draws the game with a painter, on whole pixels.
class QDrawingContext final : public Pong::DrawingContext
{
public:
    /// @p painter must outlive this object and be active.
    explicit QDrawingContext(QPainter &painter);

    void setRgb(const float rgb[3]) override;
    void drawRect(float x, float y, float w, float h) override;
    void drawEllipse(float x, float y, float w, float h) override;

    QColor currentColor() const { return color; }

private:
    QPainter &painter;
    QColor color;
};
