#include "game/pong/Game.h"

#include <random>
#include <utility>

namespace Pong
{

GameField::GameField(float fieldWidth, float fieldHeight)
    : width(fieldWidth)
    , height(fieldHeight)
    , ball(fieldWidth, fieldHeight)
    , leftPaddle(0.0F, 0.25F * fieldHeight - 0.5F * Paddle::height)
    , rightPaddle(fieldWidth - Paddle::width, 3.0F * fieldHeight * 0.25F - 0.5F * Paddle::height)
{
}

void GameField::draw(DrawingContext &context) const
{
    ball.draw(context);
    leftPaddle.draw(context);
    rightPaddle.draw(context);
}

void GameField::update(const Random &random)
{
    const Rect right = rightPaddle.sweptRect(width, height);
    const Rect left = leftPaddle.sweptRect(width, height);
    const float leftWidth = left.right - left.left;
    const Rect flight = ball.sweptRect(width, height);
    ball.update(width, height);

    if (left.overlaps(flight)) {
        ball.x = 2.0F * leftWidth - ball.x;
        ball.bounce(random);
    }
    if (right.overlaps(flight)) {
        // Measured by the left paddle on purpose; both are equally wide.
        const float limit = width - leftWidth - ball.w;
        ball.x = 2.0F * limit - ball.x;
        ball.bounce(random);
    }
    leftPaddle.update(width, height);
    rightPaddle.update(width, height);
}

Game::Game(float width, float height, Random random)
    : m_random(random ? std::move(random)
                      : Random([generator = std::minstd_rand()]() mutable { return unsigned(generator()); }))
    , m_field(std::make_unique<GameField>(width, height))
    , m_user("User", &m_field->leftPaddle, 'L', 'R')
    , m_computer("Computer", &m_field->rightPaddle)
{
}

Game::~Game() = default;

void Game::draw(DrawingContext &context) const
{
    m_field->draw(context);
}

void Game::keyPressed(char key)
{
    m_user.keyPressed(key);
    m_computer.keyPressed(key);
}

void Game::keyReleased(char key)
{
    m_user.keyReleased(key);
    m_computer.keyReleased(key);
}

void Game::update()
{
    m_field->update(m_random);
    m_user.update(*m_field);
    m_computer.update(*m_field);
    if (m_field->ball.x < 0.0F) {
        ++m_computerScore;
        serve();
    }
    if (m_field->ball.x + m_field->ball.w >= m_field->width) {
        ++m_userScore;
        serve();
    }
}

void Game::serve()
{
    m_field = std::make_unique<GameField>(m_field->width, m_field->height);
    m_user.setPaddle(&m_field->leftPaddle);
    m_computer.setPaddle(&m_field->rightPaddle);
}

} // namespace Pong
