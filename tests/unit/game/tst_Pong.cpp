#include "game/pong/Game.h"
#include "tests/support/main/Main.h"

#include <QTest>

#include <cmath>
#include <vector>

using Pong::Ball;
using Pong::Game;
using Pong::GameField;
using Pong::Paddle;

namespace
{

constexpr float fieldWidth = 900.0F;
constexpr float fieldHeight = 650.0F;

bool near(float a, float b)
{
    return std::fabs(a - b) < 1e-4F;
}

// The same generator for the game and for the independent computation below.
class Sequence
{
public:
    unsigned operator()() { return m_state = (m_state * 1103515245U + 12345U) & 0x7FFFFFFFU; }

private:
    unsigned m_state = 1;
};

// The whole game written down once more, as plainly as possible, to compare with.
struct Reference {
    float bx = 0, by = 0, angle = 0, ly = 0, lv = 0, ry = 0, rv = 0;
    unsigned user = 0, computer = 0;
    Sequence random;

    Reference() { serve(); }

    void serve()
    {
        bx = 450.0F;
        by = 325.0F;
        angle = 0.3926991F;
        ly = 132.5F;
        ry = 457.5F;
        lv = rv = 0.0F;
    }

    static float clampPaddle(float y) { return y < 0 ? 0 : (y + 60 > 650 ? 590 : y); }

    void bounce()
    {
        const int r = int(random() % 200U) - 100;
        angle = std::fmod(angle + 3.14159265F + (float(r) / 1000.0F) * 3.14159265F, 6.2831855F);
    }

    void frame()
    {
        const float lTop = std::min(ly, clampPaddle(ly + lv));
        const float lBottom = std::max(ly, clampPaddle(ly + lv)) + 60;
        const float rTop = std::min(ry, clampPaddle(ry + rv));
        const float rBottom = std::max(ry, clampPaddle(ry + rv)) + 60;
        const float oldX = bx;
        const float oldY = by;
        bx += std::cos(angle) * 4.0F;
        by += std::sin(angle) * 4.0F;
        if (by < 0) {
            by = -by;
            angle = -angle;
        } else if (by + 20 > 650) {
            by = 630 - (by - 630);
            angle = -angle;
        }
        const float left = std::min(oldX, bx);
        const float right = std::max(oldX, bx) + 20;
        const float top = std::min(oldY, by);
        const float bottom = std::max(oldY, by) + 20;
        if (10 > left && right > 0 && lBottom > top && bottom > lTop) {
            bx = 20 - bx;
            bounce();
        }
        if (900 > left && right > 890 && rBottom > top && bottom > rTop) {
            bx = 2 * 870.0F - bx;
            bounce();
        }
        move(ly, lv);
        move(ry, rv);
        const float ballCentre = by + 10;
        const float paddleCentre = ry + 30;
        rv = paddleCentre > ballCentre ? -2.0F : (ballCentre > paddleCentre ? 2.0F : 0.0F);
        if (bx < 0) {
            ++computer;
            serve();
        }
        if (bx + 20 >= 900) {
            ++user;
            serve();
        }
    }

    static void move(float &y, float &v)
    {
        const float wanted = y + v;
        y = clampPaddle(wanted);
        if (y != wanted) {
            v = 0;
        }
    }
};

class DrawingLog : public Pong::DrawingContext
{
public:
    void drawRect(float x, float y, float w, float h) override { add("rect", x, y, w, h); }
    void drawEllipse(float x, float y, float w, float h) override { add("ellipse", x, y, w, h); }

    QStringList lines;

private:
    void add(const char *what, float x, float y, float w, float h)
    {
        lines << QString::fromLatin1("%1 %2 %3 %4 %5 in %6")
                     .arg(QLatin1String(what))
                     .arg(double(x))
                     .arg(double(y))
                     .arg(double(w))
                     .arg(double(h))
                     .arg(double(r), 0, 'f', 2);
    }
};

} // namespace

class tst_Pong : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheGivenPlacesAndSpeeds();
    void ballAtMinusThreeComesBackAtThreeWithItsAngleNegated();
    void ballComesBackFromTheBottomToo();
    void negativeAnglesStayNegative();
    void paddleStopsAtTheBottomAndStartsAgainWithTheSameKey();
    void hitReversesTheBallWithinATenthOfAHalfTurn();
    void afterABounceTheBallNeverRunsAlongAnAxis();
    void ballOutOnTheLeftScoresForTheComputerAndServes();
    void ballAtTheRightEdgeScoresForTheUser();
    void lowerCaseKeysDoNothing();
    void lettingGoOfAnyKeyStops();
    void computerFollowsTheBall();
    void sweptRectHoldsBothPlacesAndMovesNothing();
    void drawsBallThenLeftThenRightPaddle();
    void tenThousandFramesMatchAnIndependentComputation();
    void withoutARandomSourceItPlaysOn();
};

void tst_Pong::startsWithTheGivenPlacesAndSpeeds()
{
    Game game(fieldWidth, fieldHeight);
    const GameField &field = game.field();
    QCOMPARE(field.ball.x, 450.0F);
    QCOMPARE(field.ball.y, 325.0F);
    QCOMPARE(field.ball.speed, 4.0F);
    QCOMPARE(field.ball.angle(), 0.3926991F);
    QCOMPARE(field.leftPaddle.x, 0.0F);
    QCOMPARE(field.leftPaddle.y, 132.5F);
    QCOMPARE(field.rightPaddle.x, 890.0F);
    QCOMPARE(field.rightPaddle.y, 457.5F);
    QCOMPARE(game.userScore(), 0U);
    QCOMPARE(game.computerScore(), 0U);
}

void tst_Pong::ballAtMinusThreeComesBackAtThreeWithItsAngleNegated()
{
    Ball ball(fieldWidth, fieldHeight);
    ball.setAngle(-1.0F);
    ball.y = -3.0F - std::sin(-1.0F) * 4.0F;
    ball.update(fieldWidth, fieldHeight);
    QVERIFY(near(ball.y, 3.0F));
    QVERIFY(near(ball.angle(), 1.0F));
}

void tst_Pong::ballComesBackFromTheBottomToo()
{
    Ball ball(fieldWidth, fieldHeight);
    ball.setAngle(1.0F);
    ball.y = 632.0F - std::sin(1.0F) * 4.0F;
    ball.update(fieldWidth, fieldHeight);
    QVERIFY(near(ball.y, 628.0F));
    QVERIFY(near(ball.angle(), -1.0F));
}

void tst_Pong::negativeAnglesStayNegative()
{
    Ball ball(fieldWidth, fieldHeight);
    ball.setAngle(-7.0F);
    QVERIFY(near(ball.angle(), -7.0F + 6.2831855F));
    QVERIFY(ball.angle() < 0.0F);
}

void tst_Pong::paddleStopsAtTheBottomAndStartsAgainWithTheSameKey()
{
    Game game(fieldWidth, fieldHeight, Sequence());
    Paddle &paddle = game.field().leftPaddle;
    paddle.y = fieldHeight - 61.0F;
    game.keyPressed('R');
    paddle.update(fieldWidth, fieldHeight);
    QCOMPARE(paddle.y, fieldHeight - 60.0F);
    QCOMPARE(paddle.velocity, 0.0F);
    game.keyPressed('R');
    QCOMPARE(paddle.velocity, 2.0F);
}

void tst_Pong::hitReversesTheBallWithinATenthOfAHalfTurn()
{
    for (const unsigned r : {0U, 100U, 199U}) {
        GameField field(fieldWidth, fieldHeight);
        const float incoming = 3.0F;
        field.ball.setAngle(incoming);
        field.ball.x = 11.0F;
        field.ball.y = field.leftPaddle.y + 20.0F;
        field.update([r] { return r; });
        const float turned = std::remainder(field.ball.angle() - incoming - 3.14159265F, 6.2831855F);
        QVERIFY2(std::fabs(turned) <= 0.1F * 3.1416F, qPrintable(QString::number(double(turned))));
        QVERIFY(std::cos(field.ball.angle()) > 0.0F);
    }
}

void tst_Pong::afterABounceTheBallNeverRunsAlongAnAxis()
{
    Ball ball(fieldWidth, fieldHeight);
    ball.setAngle(0.0F);
    ball.bounce([] { return 100U; }); // no deviation: the exact half turn
    QVERIFY(near(ball.angle(), 3.14159265F + 0.05F));
}

void tst_Pong::ballOutOnTheLeftScoresForTheComputerAndServes()
{
    Game game(fieldWidth, fieldHeight, Sequence());
    game.field().ball.x = 1.0F;
    game.field().ball.y = 600.0F;
    game.field().ball.setAngle(3.0F);
    game.update();
    QCOMPARE(game.computerScore(), 1U);
    QCOMPARE(game.userScore(), 0U);
    QCOMPARE(game.field().ball.x, 450.0F);
    QCOMPARE(game.field().ball.angle(), 0.3926991F);
    // The players hold the new paddles.
    game.keyPressed('L');
    QCOMPARE(game.field().leftPaddle.velocity, -2.0F);
}

void tst_Pong::ballAtTheRightEdgeScoresForTheUser()
{
    Game game(fieldWidth, fieldHeight, Sequence());
    game.field().ball.x = 879.0F;
    game.field().ball.y = 100.0F;
    game.field().ball.setAngle(0.1F);
    game.update();
    QCOMPARE(game.userScore(), 1U);
    QCOMPARE(game.computerScore(), 0U);
    QCOMPARE(game.field().ball.x, 450.0F);
}

void tst_Pong::lowerCaseKeysDoNothing()
{
    Game game(fieldWidth, fieldHeight, Sequence());
    game.keyPressed('l');
    game.keyPressed('r');
    QCOMPARE(game.field().leftPaddle.velocity, 0.0F);
}

void tst_Pong::lettingGoOfAnyKeyStops()
{
    Game game(fieldWidth, fieldHeight, Sequence());
    game.keyPressed('L');
    QCOMPARE(game.field().leftPaddle.velocity, -2.0F);
    game.keyReleased('x');
    QCOMPARE(game.field().leftPaddle.velocity, 0.0F);
    QCOMPARE(game.field().rightPaddle.velocity, 0.0F);
}

void tst_Pong::computerFollowsTheBall()
{
    Game game(fieldWidth, fieldHeight, Sequence());
    game.update(); // the ball is above the right paddle's middle
    QCOMPARE(game.field().rightPaddle.velocity, -2.0F);
    game.field().ball.y = 600.0F;
    game.update();
    QCOMPARE(game.field().rightPaddle.velocity, 2.0F);
}

void tst_Pong::sweptRectHoldsBothPlacesAndMovesNothing()
{
    Paddle paddle(0.0F, 100.0F);
    paddle.velocity = -2.0F;
    const Pong::Rect swept = paddle.sweptRect(fieldWidth, fieldHeight);
    QCOMPARE(swept.top, 98.0F);
    QCOMPARE(swept.bottom, 160.0F);
    QCOMPARE(swept.right - swept.left, 10.0F);
    QCOMPARE(paddle.y, 100.0F);
}

void tst_Pong::drawsBallThenLeftThenRightPaddle()
{
    const Game game(fieldWidth, fieldHeight, Sequence());
    DrawingLog log;
    game.draw(log);
    QCOMPARE(log.lines, QStringList({QStringLiteral("ellipse 450 325 20 20 in 0.95"),
                                     QStringLiteral("rect 0 132.5 10 60 in 0.87"),
                                     QStringLiteral("rect 890 457.5 10 60 in 0.87")}));
}

void tst_Pong::tenThousandFramesMatchAnIndependentComputation()
{
    Game game(fieldWidth, fieldHeight, Sequence());
    Reference reference;
    for (int frame = 0; frame < 10000; ++frame) {
        // A user that plays: now up, now down, now resting.
        switch ((frame / 37) % 3) {
        case 0:
            game.keyPressed('L');
            reference.lv = -2.0F;
            break;
        case 1:
            game.keyPressed('R');
            reference.lv = 2.0F;
            break;
        default:
            game.keyReleased('u');
            reference.lv = 0.0F;
            break;
        }
        game.update();
        reference.frame();
        const GameField &field = game.field();
        const bool same = near(field.ball.x, reference.bx) && near(field.ball.y, reference.by) &&
                          near(field.ball.angle(), reference.angle) &&
                          near(field.leftPaddle.y, reference.ly) && near(field.rightPaddle.y, reference.ry) &&
                          game.userScore() == reference.user && game.computerScore() == reference.computer;
        QVERIFY2(same, qPrintable(QStringLiteral("frame %1: ball %2,%3 and %4,%5")
                                      .arg(frame)
                                      .arg(double(field.ball.x))
                                      .arg(double(field.ball.y))
                                      .arg(double(reference.bx))
                                      .arg(double(reference.by))));
    }
    QVERIFY(reference.user + reference.computer > 10U);
}

void tst_Pong::withoutARandomSourceItPlaysOn()
{
    Game game(fieldWidth, fieldHeight);
    for (int frame = 0; frame < 5000; ++frame) {
        game.update();
    }
    QVERIFY(game.userScore() + game.computerScore() > 0U);
}

QTEST_APPLESS_MAIN(tst_Pong)
#include "tst_Pong.moc"
