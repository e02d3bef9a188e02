#include "engine/ScreenJump.h"
#include "engine/platform/uinput/UinputPointer.h"
#include "tests/support/main/Main.h"
#include "tests/support/uinput/RecordingKernel.h"

#include <QTest>

class tst_UinputPointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void stepsAreRelativeMotion();
    void aReturnTakesTheStepsBack();
    void aReturnAfterAJumpTakesBackWhatCameAfterIt();
    void theFirstJumpGoesToTheMiddleOfTheNextScreen();
    void aSecondJumpKeepsThePlace();
    void jumpsGoRoundInBothDirections();
    void stepsAfterAJumpCount();
    void theDesktopsEdgeStopsThePointer();
    void oneScreenIsLeftAlone();
    void otherScreensMakeThePlaceUnknown();
    void screensAreNeverEmpty();

private:
    /// What the engine does for "monitor left", or "monitor right" (@p previous).
    void jump(bool previous)
    {
        m_pointer->jumpTo(screenJumpTarget(m_pointer->position(), m_pointer->screens(), previous));
    }
    /// Where the pointer has been put last, as a pixel of the desktop.
    QPoint landed();

    QVector<QRect> m_screens;
    std::unique_ptr<RecordingKernel> m_kernel;
    std::unique_ptr<UinputPointer> m_pointer;
    QPoint m_numbers;
};

void tst_UinputPointer::init()
{
    m_screens = {QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)};
    m_pointer.reset();
    m_kernel = std::make_unique<RecordingKernel>();
    auto devices = std::make_shared<UinputDevices>(*m_kernel, QStringLiteral("/dev/null"));
    QString problem;
    QVERIFY(devices->open(problem));
    m_pointer = std::make_unique<UinputPointer>(devices, [this] { return m_screens; });
    m_numbers = {};
}

QPoint tst_UinputPointer::landed()
{
    for (const QString &line : m_kernel->takeLines()) {
        const QStringList words = line.split(QLatin1Char(' '));
        if (words[0] == QLatin1String("abs")) {
            (words[1] == QLatin1String("0") ? m_numbers.rx() : m_numbers.ry()) = words[2].toInt();
        }
    }
    // As the desktop does it: the number's part of the range, on all screens together.
    QRect all;
    for (const QRect &screen : qAsConst(m_screens)) {
        all |= screen;
    }
    const double range = UinputDevices::places + 1;
    return all.topLeft() +
           QPoint(int(m_numbers.x() / range * all.width()), int(m_numbers.y() / range * all.height()));
}

void tst_UinputPointer::stepsAreRelativeMotion()
{
    const QPoint start = m_pointer->position();
    for (int i = 0; i < 3; ++i) {
        m_pointer->moveTo(m_pointer->position() + QPoint(1, 0));
    }
    m_pointer->moveTo(m_pointer->position() + QPoint(0, -1));
    QCOMPARE(m_kernel->takeLines(), QStringList({QStringLiteral("rel 0 1"), QStringLiteral("rel 0 1"),
                                                 QStringLiteral("rel 0 1"), QStringLiteral("rel 1 -1")}));
    QCOMPARE(m_pointer->position(), start + QPoint(3, -1));
}

void tst_UinputPointer::aReturnTakesTheStepsBack()
{
    const QPoint touch = m_pointer->position();
    for (int i = 0; i < 2500; ++i) { // further than any screen
        m_pointer->moveTo(m_pointer->position() - QPoint(0, 1));
    }
    m_kernel->takeLines();
    m_pointer->moveTo(touch);
    QCOMPARE(m_kernel->takeLines(), QStringList{QStringLiteral("rel 1 2500")});
    m_pointer->moveTo(touch);
    QCOMPARE(m_kernel->takeLines(), QStringList());
}

void tst_UinputPointer::aReturnAfterAJumpTakesBackWhatCameAfterIt()
{
    const QPoint touch = m_pointer->position();
    jump(false);
    m_pointer->moveTo(m_pointer->position() + QPoint(0, 1));
    m_pointer->moveTo(m_pointer->position() + QPoint(0, 1));
    m_kernel->takeLines();
    m_pointer->moveTo(touch);
    QCOMPARE(m_kernel->takeLines(), QStringList{QStringLiteral("rel 1 -2")});
}

void tst_UinputPointer::theFirstJumpGoesToTheMiddleOfTheNextScreen()
{
    jump(false);
    QCOMPARE(landed(), QPoint(1920 + 640, 512));
    QCOMPARE(m_pointer->position(), QPoint(1920 + 640, 512));
}

void tst_UinputPointer::aSecondJumpKeepsThePlace()
{
    jump(false);
    jump(false);
    QCOMPARE(landed(), QPoint(640, 512));
    jump(true);
    QCOMPARE(landed(), QPoint(1920 + 640, 512));
}

void tst_UinputPointer::jumpsGoRoundInBothDirections()
{
    m_screens.append(QRect(-800, 100, 800, 600));
    const auto screen = [this] {
        const QPoint place = landed();
        int index = 0;
        while (index < m_screens.size() && !m_screens.at(index).contains(place)) {
            ++index;
        }
        return index;
    };
    QVector<int> visited;
    for (const bool previous : {false, false, false, true, true, true}) {
        jump(previous);
        visited << screen();
    }
    QCOMPARE(visited, QVector<int>({1, 2, 0, 2, 1, 0}));
}

void tst_UinputPointer::stepsAfterAJumpCount()
{
    jump(false);
    for (int i = 0; i < 10; ++i) {
        m_pointer->moveTo(m_pointer->position() + QPoint(1, 0));
    }
    landed();
    jump(false);
    QCOMPARE(landed(), QPoint(650, 512));
}

void tst_UinputPointer::theDesktopsEdgeStopsThePointer()
{
    jump(false);
    for (int i = 0; i < 700; ++i) {
        m_pointer->moveTo(m_pointer->position() + QPoint(1, 0));
    }
    QCOMPARE(m_pointer->position(), QPoint(3199, 512));
    QCOMPARE(m_kernel->takeLines().count(QStringLiteral("rel 0 1")), 700);
}

void tst_UinputPointer::oneScreenIsLeftAlone()
{
    m_screens.removeLast();
    jump(false);
    jump(true);
    m_screens.clear(); // not known yet
    jump(false);
    QCOMPARE(m_kernel->takeLines(), QStringList());
}

void tst_UinputPointer::otherScreensMakeThePlaceUnknown()
{
    jump(false);
    const QPoint touch = m_pointer->position();
    m_screens[0] = QRect(0, 0, 1600, 900);
    m_screens[1].moveLeft(1600);
    landed();
    m_pointer->moveTo(touch + QPoint(0, 1));
    QCOMPARE(m_kernel->takeLines(), QStringList{QStringLiteral("rel 1 1")});
    jump(false); // from the screen where it was last, to the middle of the other
    QCOMPARE(landed(), QPoint(800, 450));
}

void tst_UinputPointer::screensAreNeverEmpty()
{
    m_screens.clear();
    QCOMPARE(m_pointer->screens().size(), 1);
}

QTEST_GUILESS_MAIN(tst_UinputPointer)

#include "tst_UinputPointer.moc"
