#pragma once

namespace Pong
{

/// What the game draws itself on. Coordinates are pixels, y grows downwards.
class DrawingContext
{
public:
    DrawingContext() = default;
    DrawingContext(const DrawingContext &) = delete;
    DrawingContext &operator=(const DrawingContext &) = delete;
    virtual ~DrawingContext();

    /// Colour of what is drawn next: red, green and blue, each 0 to 1.
    virtual void setRgb(const float rgb[3]);
    virtual void drawRect(float x, float y, float w, float h) = 0;
    virtual void drawEllipse(float x, float y, float w, float h) = 0;

protected:
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
};

/// Anything that can draw itself.
class Drawable
{
public:
    virtual ~Drawable();
    virtual void draw(DrawingContext &context) const = 0;

protected:
    Drawable() = default;
    Drawable(const Drawable &) = default;
    Drawable &operator=(const Drawable &) = default;
};

} // namespace Pong
