#pragma once

#include "game/pong/DrawingContext.h"

#include <functional>
#include <memory>

namespace Pong
{

/// A uniform source of non-negative integers.
using Random = std::function<unsigned()>;

/// A rectangle by its edges.
struct Rect {
    float left;
    float top;
    float right;
    float bottom;

    /// True when the two share more than an edge.
    bool overlaps(const Rect &other) const;
};

/// Something on the field that moves by one step per frame.
class GameObject : public Drawable
{
public:
    virtual std::unique_ptr<GameObject> clone() const = 0;

    /// One step on a field of this size.
    virtual void update(float width, float height) = 0;

    Rect rect() const { return {x, y, x + w, y + h}; }

    /// The smallest rectangle that holds the object before and after its next step. The object itself stays.
    Rect sweptRect(float width, float height) const;

    float x; ///< left edge
    float y; ///< top edge
    float w;
    float h;

protected:
    GameObject(float left, float top, float objectWidth, float objectHeight);
};

/// The ball: flies straight, comes back from the top and bottom edges.
class Ball : public GameObject
{
public:
    /// In the middle of a field of this size, on its way to the right and down.
    Ball(float fieldWidth, float fieldHeight);

    void draw(DrawingContext &context) const override;
    std::unique_ptr<GameObject> clone() const override;
    void update(float width, float height) override;

    /// Keeps the remainder of a full turn with the sign of @p angle: a negative angle stays negative.
    void setAngle(float angle);
    float angle() const { return m_angle; }

    /// Turns back the way it came (deliberately not mirrored), off by up to a tenth of a half turn, and never
    /// straight along an axis.
    void bounce(const Random &random);

    float speed; ///< pixels per step

private:
    float m_angle; ///< radians
};

/// A paddle: moves up and down, stops at the edges.
class Paddle : public GameObject
{
public:
    static constexpr float width = 10.0F;
    static constexpr float height = 60.0F;
    static constexpr float speed = 2.0F; ///< pixels per step

    Paddle(float left, float top);

    void draw(DrawingContext &context) const override;
    std::unique_ptr<GameObject> clone() const override;
    void update(float fieldWidth, float fieldHeight) override;

    float velocity = 0.0F; ///< pixels per step, negative is up
};

} // namespace Pong
