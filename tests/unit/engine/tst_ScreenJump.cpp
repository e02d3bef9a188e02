#include "engine/ScreenJump.h"
#include "tests/support/main/Main.h"

#include <QTest>

#include <limits>

class tst_ScreenJump : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void jump_data();
    void jump();
};

void tst_ScreenJump::jump_data()
{
    QTest::addColumn<QVector<QRect>>("screens");
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<bool>("previous");
    QTest::addColumn<QPoint>("to");

    const QRect wide(0, 0, 1920, 1080);
    const QRect narrow(1920, 0, 1280, 1024);
    const QRect left(-800, 100, 800, 600);
    const QVector<QRect> two{wide, narrow};
    const QVector<QRect> three{wide, narrow, left};

    QTest::newRow("no screens") << QVector<QRect>() << QPoint(3, 4) << false << QPoint(3, 4);
    QTest::newRow("one screen") << QVector<QRect>{wide} << QPoint(1500, 1000) << false << QPoint(1500, 1000);
    QTest::newRow("one screen back") << QVector<QRect>{wide} << QPoint(1500, 1000) << true
                                     << QPoint(1500, 1000);
    QTest::newRow("keeps the distance") << two << QPoint(100, 200) << false << QPoint(2020, 200);
    QTest::newRow("too far right: the middle")
        << two << QPoint(1500, 200) << false << QPoint(1920 + 640, 200);
    QTest::newRow("too far down: the middle") << two << QPoint(10, 1030) << false << QPoint(1930, 512);
    QTest::newRow("as far as it is wide") << two << QPoint(1280, 0) << false << QPoint(3200, 0);
    QTest::newRow("as far as it is high") << two << QPoint(0, 1024) << false << QPoint(1920, 1024);
    QTest::newRow("wraps after the last") << two << QPoint(2020, 200) << false << QPoint(100, 200);
    QTest::newRow("wraps before the first") << three << QPoint(100, 200) << true << QPoint(-700, 300);
    QTest::newRow("previous") << three << QPoint(-700, 300) << true << QPoint(2020, 200);
    QTest::newRow("odd sizes are halved down")
        << QVector<QRect>{wide, QRect(1920, 0, 801, 601)} << QPoint(1900, 1000) << false << QPoint(2320, 300);
    QTest::newRow("beside the screens: the nearest") << two << QPoint(5000, 5) << true << QPoint(960, 5);
    QTest::newRow("at the edge where two meet") << two << QPoint(1920, 200) << false << QPoint(0, 200);
    QTest::newRow("amid two screens: the first")
        << QVector<QRect>{QRect(0, 0, 100, 100), QRect(199, 0, 100, 100)} << QPoint(149, 5) << false
        << QPoint(249, 5);
    QTest::newRow("on two screens at once: the first") << QVector<QRect>{wide, QRect(0, 0, 1280, 720), narrow}
                                                       << QPoint(100, 200) << true << QPoint(2020, 200);
    QTest::newRow("far away") << two
                              << QPoint(std::numeric_limits<int>::min(), std::numeric_limits<int>::max())
                              << false << QPoint(std::numeric_limits<int>::min() + 1920, 512);
    QTest::newRow("huge screens") << QVector<QRect>{QRect(QPoint(std::numeric_limits<int>::min(), 0),
                                                          QPoint(std::numeric_limits<int>::max(), 10)),
                                                    QRect(0, 0, 10, 10)}
                                  << QPoint(std::numeric_limits<int>::max(), 3) << false << QPoint(5, 3);
}

void tst_ScreenJump::jump()
{
    QFETCH(QVector<QRect>, screens);
    QFETCH(QPoint, from);
    QFETCH(bool, previous);
    QFETCH(QPoint, to);
    QCOMPARE(screenJumpTarget(from, screens, previous), to);
}

QTEST_GUILESS_MAIN(tst_ScreenJump)
#include "tst_ScreenJump.moc"
