#include "game/pong/GameObject.h"

#include <algorithm>
#include <cmath>

namespace Pong
{

namespace
{

constexpr float pi = 3.14159265F;
constexpr float fullTurn = 6.2831855F;
constexpr float ballSize = 20.0F;
constexpr float ballSpeed = 4.0F;
constexpr float startAngle = 0.3926991F; // an eighth of a half turn
constexpr float ballColour[3] = {0.95F, 0.95F, 0.95F};
constexpr float paddleColour[3] = {0.87F, 0.87F, 0.87F};

} // namespace

bool Rect::overlaps(const Rect &other) const
{
    return right > other.left && other.right > left && bottom > other.top && other.bottom > top;
}

GameObject::GameObject(float left, float top, float objectWidth, float objectHeight)
    : x(left)
    , y(top)
    , w(objectWidth)
    , h(objectHeight)
{
}

Rect GameObject::sweptRect(float width, float height) const
{
    const std::unique_ptr<GameObject> next = clone();
    next->update(width, height);
    const Rect a = rect();
    const Rect b = next->rect();
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

Ball::Ball(float fieldWidth, float fieldHeight)
    : GameObject(0.5F * fieldWidth, 0.5F * fieldHeight, ballSize, ballSize)
    , speed(ballSpeed)
    , m_angle(startAngle)
{
}

void Ball::draw(DrawingContext &context) const
{
    context.setRgb(ballColour);
    context.drawEllipse(x, y, w, h);
}

std::unique_ptr<GameObject> Ball::clone() const
{
    return std::make_unique<Ball>(*this);
}

void Ball::update(float /*width*/, float height)
{
    x += std::cos(m_angle) * speed;
    y += std::sin(m_angle) * speed;
    if (y < 0.0F) {
        y = -y;
        setAngle(-m_angle);
    } else if (y + h > height) {
        const float limit = height - h;
        y = limit - (y - limit);
        setAngle(-m_angle);
    }
}

void Ball::setAngle(float angle)
{
    m_angle = std::fmod(angle, fullTurn);
}

void Ball::bounce(const Random &random)
{
    const int deviation = static_cast<int>(random() % 200U) - 100;
    setAngle(m_angle + pi + (static_cast<float>(deviation) / 1000.0F) * pi);
    const float magnitude = std::fabs(m_angle);
    if (magnitude == 0.0F || magnitude == pi || magnitude == 0.5F * pi || magnitude == 1.5F * pi) {
        m_angle += 0.05F;
    }
}

Paddle::Paddle(float left, float top)
    : GameObject(left, top, width, height)
{
}

void Paddle::draw(DrawingContext &context) const
{
    context.setRgb(paddleColour);
    context.drawRect(x, y, w, h);
}

std::unique_ptr<GameObject> Paddle::clone() const
{
    return std::make_unique<Paddle>(*this);
}

void Paddle::update(float /*fieldWidth*/, float fieldHeight)
{
    y += velocity;
    if (y < 0.0F) {
        y = 0.0F;
        velocity = 0.0F;
    } else if (y + h > fieldHeight) {
        y = fieldHeight - h;
        velocity = 0.0F;
    }
}

} // namespace Pong
