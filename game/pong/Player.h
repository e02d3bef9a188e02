#pragma once

#include "game/pong/GameObject.h"

#include <string>

namespace Pong
{

class GameField;

/// Takes input as single characters.
class InputHandler
{
public:
    InputHandler() = default;
    InputHandler(const InputHandler &) = delete;
    InputHandler &operator=(const InputHandler &) = delete;
    virtual ~InputHandler();

    virtual void keyPressed(char key) = 0;
    virtual void keyReleased(char key) = 0;
};

/// Steers one paddle.
class Player : public InputHandler
{
public:
    /// @p paddle stays the field's.
    Player(std::string name, Paddle *paddle);

    /// Called once per frame, after the field has moved.
    virtual void update(GameField &field) = 0;

    const std::string &name() const { return m_name; }
    void setPaddle(Paddle *paddle) { m_paddle = paddle; }

protected:
    Paddle &paddle() { return *m_paddle; }

private:
    std::string m_name;
    Paddle *m_paddle;
};

/// The user: one key up, one key down, letting go of any key stops. Keys are case-sensitive.
class HumanPlayer : public Player
{
public:
    HumanPlayer(std::string name, Paddle *paddle, char upKey, char downKey);

    void keyPressed(char key) override;
    void keyReleased(char key) override;
    void update(GameField &field) override;

private:
    char m_upKey;
    char m_downKey;
};

/// Follows the ball, no faster than the user can.
class ComputerPlayer : public Player
{
public:
    using Player::Player;

    void keyPressed(char key) override;
    void keyReleased(char key) override;
    void update(GameField &field) override;
};

} // namespace Pong
