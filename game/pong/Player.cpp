#include "game/pong/Player.h"

#include "game/pong/Game.h"

#include <utility>

namespace Pong
{

InputHandler::~InputHandler() = default;

Player::Player(std::string name, Paddle *paddle)
    : m_name(std::move(name))
    , m_paddle(paddle)
{
}

HumanPlayer::HumanPlayer(std::string name, Paddle *paddle, char upKey, char downKey)
    : Player(std::move(name), paddle)
    , m_upKey(upKey)
    , m_downKey(downKey)
{
}

void HumanPlayer::keyPressed(char key)
{
    if (key == m_upKey) {
        paddle().velocity = -Paddle::speed;
    }
    if (key == m_downKey) {
        paddle().velocity = Paddle::speed;
    }
}

void HumanPlayer::keyReleased(char /*key*/)
{
    paddle().velocity = 0.0F;
}

void HumanPlayer::update(GameField & /*field*/) {}

void ComputerPlayer::keyPressed(char /*key*/) {}

void ComputerPlayer::keyReleased(char /*key*/) {}

void ComputerPlayer::update(GameField &field)
{
    const float ballCentre = field.ball.y + 0.5F * field.ball.h;
    const float paddleCentre = paddle().y + 0.5F * paddle().h;
    if (paddleCentre > ballCentre) {
        paddle().velocity = -Paddle::speed;
    } else if (ballCentre > paddleCentre) {
        paddle().velocity = Paddle::speed;
    } else {
        paddle().velocity = 0.0F;
    }
}

} // namespace Pong
