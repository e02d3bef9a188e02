#pragma once

#include "game/pong/GameObject.h"
#include "game/pong/Player.h"

namespace Pong
{

/// The field with the ball and both paddles.
class GameField : public Drawable
{
public:
    GameField(float fieldWidth, float fieldHeight);

    /// The ball, the left paddle, the right paddle; no background.
    void draw(DrawingContext &context) const override;

    /// One frame: moves and collisions.
    void update(const Random &random);

    float width;
    float height;
    Ball ball;
    Paddle leftPaddle;
    Paddle rightPaddle;
};

/// A game of the user (left paddle) against the computer. Advances by one fixed step per frame; a point leads
/// straight to the next serve, and scores only grow.
class Game : public Drawable, public InputHandler
{
public:
    /// Deviations of the ball come from @p random; without one, from a generator with the platform's default
    /// seed.
    Game(float width, float height, Random random = {});
    Game(const Game &) = delete;
    Game &operator=(const Game &) = delete;
    ~Game() override;

    void draw(DrawingContext &context) const override;
    void keyPressed(char key) override;
    void keyReleased(char key) override;

    /// One frame.
    void update();

    unsigned userScore() const { return m_userScore; }
    unsigned computerScore() const { return m_computerScore; }
    GameField &field() { return *m_field; }

private:
    void serve();

    Random m_random;
    std::unique_ptr<GameField> m_field;
    HumanPlayer m_user;
    ComputerPlayer m_computer;
    unsigned m_userScore = 0;
    unsigned m_computerScore = 0;
};

} // namespace Pong
