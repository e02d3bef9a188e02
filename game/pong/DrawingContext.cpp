#include "game/pong/DrawingContext.h"

namespace Pong
{

DrawingContext::~DrawingContext() = default;

void DrawingContext::setRgb(const float rgb[3])
{
    r = rgb[0];
    g = rgb[1];
    b = rgb[2];
}

Drawable::~Drawable() = default;

} // namespace Pong
