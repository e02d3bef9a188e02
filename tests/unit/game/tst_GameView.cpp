#include "game/GameView.h"
#include "game/QDrawingContext.h"
#include "tests/support/main/Main.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QTest>

class tst_GameView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void colourChannelsAreRounded();
    void rectanglesAreOnWholePixels();
    void paintsBallAndPaddlesInTheirColours();
    void scoresStandOnTheirBaselines();
    void scoresAreLargeAndBold();
    void knobLeftMovesUpUntilItIsLetGo();
    void knobLeftTwiceStopsAtTheTop();
    void lettingGoWithoutAKeyKeepsStill();
    void keyboardSteersWithCapitals();
    void lowerCaseKeysDoNotMove();
    void charactersBeyondAByteArePassedAsZero();
    void eventsWithoutTextAreIgnored();
    void framesRunOnlyWhileRunning();
    void placesAndScoresSurviveAPause();
    void aFrameTakesLessThanTwoMilliseconds();

private:
    static int letATimerPassOf(QObject &object);
    static float velocity(GameView &view) { return view.game().field().leftPaddle.velocity; }
};

// The interval in ms of the timer that runs for the object or one of its children, after it has fired once; 0
// when none runs, -1 when several do.
int tst_GameView::letATimerPassOf(QObject &object)
{
    QObjectList all = object.findChildren<QObject *>();
    all.append(&object);
    QObject *receiver = nullptr;
    QAbstractEventDispatcher::TimerInfo timer(0, 0, Qt::PreciseTimer);
    for (QObject *each : qAsConst(all)) {
        for (const auto &info : QAbstractEventDispatcher::instance()->registeredTimers(each)) {
            if (receiver) {
                return -1;
            }
            receiver = each;
            timer = info;
        }
    }
    if (receiver) {
        QTimerEvent event(timer.timerId);
        QCoreApplication::sendEvent(receiver, &event);
    }
    return timer.interval;
}

void tst_GameView::colourChannelsAreRounded()
{
    QImage image(10, 10, QImage::Format_ARGB32);
    QPainter painter(&image);
    QDrawingContext context(painter);
    const float rgb[3] = {0.95F, 0.87F, 0.5F};
    context.setRgb(rgb);
    QCOMPARE(context.currentColor(), QColor(242, 222, 128, 255));
}

void tst_GameView::rectanglesAreOnWholePixels()
{
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    QDrawingContext context(painter);
    const float white[3] = {1.0F, 1.0F, 1.0F};
    context.setRgb(white);
    context.drawRect(1.6F, 1.4F, 2.5F, 3.4F); // 2, 1, 3 x 3
    painter.end();
    QCOMPARE(image.pixelColor(1, 1), QColor(Qt::black));
    QCOMPARE(image.pixelColor(2, 1), QColor(Qt::white));
    QCOMPARE(image.pixelColor(4, 3), QColor(Qt::white));
    QCOMPARE(image.pixelColor(5, 3), QColor(Qt::black));
    QCOMPARE(image.pixelColor(4, 4), QColor(Qt::black));
}

void tst_GameView::paintsBallAndPaddlesInTheirColours()
{
    GameView view(nullptr);
    view.resize(900, 650);
    const QImage image = view.grab().toImage();
    QCOMPARE(image.pixelColor(460, 335), QColor(242, 242, 242));
    QCOMPARE(image.pixelColor(5, 160), QColor(222, 222, 222));
    QCOMPARE(image.pixelColor(895, 487), QColor(222, 222, 222));
    QVERIFY(image.pixelColor(451, 326) != QColor(242, 242, 242)); // a ball, not a square
}

void tst_GameView::scoresStandOnTheirBaselines()
{
    GameView view(nullptr);
    view.resize(900, 650);
    const QImage image = view.grab().toImage();
    const auto inked = [&](const QRect &area) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (image.pixelColor(x, y) == QColor(200, 200, 200)) {
                    return true;
                }
            }
        }
        return false;
    };
    QVERIFY(inked({300, 5, 40, 46}));
    QVERIFY(inked({600, 5, 40, 46}));
    QVERIFY(!inked({300, 56, 40, 40}));
}

void tst_GameView::scoresAreLargeAndBold()
{
    class Scores : public QWidget
    {
        void paintEvent(QPaintEvent * /*event*/) override
        {
            QPainter painter(this);
            painter.setPen(QColor(200, 200, 200));
            painter.setFont(QFont(QStringLiteral("Helvetica"), 40, 75));
            painter.drawText(300, 50, QStringLiteral("0"));
            painter.drawText(600, 50, QStringLiteral("0"));
        }
    };
    GameView view(nullptr);
    Scores scores;
    for (QWidget *each : {static_cast<QWidget *>(&view), static_cast<QWidget *>(&scores)}) {
        each->resize(900, 650);
    }
    for (const int x : {300, 600}) {
        const QRect place(x, 0, 60, 60);
        QCOMPARE(view.grab(place).toImage(), scores.grab(place).toImage());
    }
}

void tst_GameView::knobLeftMovesUpUntilItIsLetGo()
{
    GameView view(nullptr);
    view.gameControl('L');
    QCOMPARE(velocity(view), -2.0F);
    view.gameControl('S');
    QCOMPARE(velocity(view), 0.0F);
    view.gameControl('R');
    QCOMPARE(velocity(view), 2.0F);
}

void tst_GameView::knobLeftTwiceStopsAtTheTop()
{
    GameView view(nullptr);
    view.gameControl('L');
    view.gameControl('L');
    for (int frame = 0; frame < 100; ++frame) {
        view.handleGameFrame();
    }
    QCOMPARE(view.game().field().leftPaddle.y, 0.0F);
    QCOMPARE(velocity(view), 0.0F);
}

void tst_GameView::lettingGoWithoutAKeyKeepsStill()
{
    GameView view(nullptr);
    view.gameControl('S');
    QCOMPARE(velocity(view), 0.0F);
}

void tst_GameView::keyboardSteersWithCapitals()
{
    GameView view(nullptr);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_L, Qt::ShiftModifier, QStringLiteral("L"));
    QCoreApplication::sendEvent(&view, &press);
    QCOMPARE(velocity(view), -2.0F);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_L, Qt::NoModifier, QStringLiteral("l"));
    QCoreApplication::sendEvent(&view, &release);
    QCOMPARE(velocity(view), 0.0F);
}

void tst_GameView::lowerCaseKeysDoNotMove()
{
    GameView view(nullptr);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_L, Qt::NoModifier, QStringLiteral("l"));
    QCoreApplication::sendEvent(&view, &press);
    QCOMPARE(velocity(view), 0.0F);
}

void tst_GameView::charactersBeyondAByteArePassedAsZero()
{
    GameView view(nullptr);
    // U+014C has the low byte of 'L'.
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(0x014C)));
    QCoreApplication::sendEvent(&view, &press);
    QCOMPARE(velocity(view), 0.0F);
}

void tst_GameView::eventsWithoutTextAreIgnored()
{
    GameView view(nullptr);
    view.gameControl('L');
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Shift, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &release);
    QCOMPARE(velocity(view), -2.0F);
}

// The frames' timer is asked for at the event loop, and lets its time pass when the test says so.
void tst_GameView::framesRunOnlyWhileRunning()
{
    GameView view(nullptr);
    const float start = view.game().field().ball.x;
    QCOMPARE(letATimerPassOf(view), 0);
    QCOMPARE(view.game().field().ball.x, start);
    view.setRunning(true);
    QCOMPARE(letATimerPassOf(view), GameView::frameInterval);
    const float second = view.game().field().ball.x;
    QVERIFY(second > start);
    QCOMPARE(letATimerPassOf(view), GameView::frameInterval);
    const float third = view.game().field().ball.x;
    QVERIFY(third > second);
    view.setRunning(false);
    QCOMPARE(letATimerPassOf(view), 0);
    QCOMPARE(view.game().field().ball.x, third);
}

void tst_GameView::placesAndScoresSurviveAPause()
{
    GameView view(nullptr);
    for (int frame = 0; frame < 400; ++frame) {
        view.handleGameFrame();
    }
    const unsigned scores = view.game().userScore() + view.game().computerScore();
    const float x = view.game().field().ball.x;
    QVERIFY(scores > 0U);
    view.setRunning(true);
    view.setRunning(false);
    QCOMPARE(view.game().userScore() + view.game().computerScore(), scores);
    QCOMPARE(view.game().field().ball.x, x);
}

void tst_GameView::aFrameTakesLessThanTwoMilliseconds()
{
    GameView view(nullptr);
    view.resize(900, 650);
    QImage image(900, 650, QImage::Format_ARGB32_Premultiplied);
    view.render(&image);
    constexpr int frames = 50;
    QElapsedTimer timer;
    timer.start();
    for (int frame = 0; frame < frames; ++frame) {
        view.game().update();
        view.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    }
    const double each = static_cast<double>(timer.nsecsElapsed()) / 1e6 / frames;
    qInfo("a frame: %.3f ms", each);
#if defined(__OPTIMIZE__) && !defined(VELTRIX_ADDRESS_SANITIZER)
    QVERIFY2(each < 2.0, qPrintable(QString::number(each)));
#endif
}

QTEST_MAIN(tst_GameView)
#include "tst_GameView.moc"
