#include "app/WindowPlace.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_WindowPlace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheMiddleOfTheScreen_data();
    void isTheMiddleOfTheScreen();
    void wholeIsWholeOnOneScreen();
};

void tst_WindowPlace::isTheMiddleOfTheScreen_data()
{
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("usual") << QRect(0, 0, 1920, 1080) << QPoint(510, 215);
    QTest::newRow("odd sizes are rounded down") << QRect(0, 0, 1365, 767) << QPoint(232, 58);
    QTest::newRow("just as large") << QRect(0, 0, 900, 650) << QPoint(0, 0);
    QTest::newRow("the one at the right") << QRect(1920, 200, 1280, 1024) << QPoint(2110, 387);
    QTest::newRow("the one at the left") << QRect(-1280, 0, 1280, 1024) << QPoint(-1090, 187);
    QTest::newRow("too low for it") << QRect(0, 0, 1024, 600) << QPoint(62, 0);
    QTest::newRow("too small for it, at the right") << QRect(1920, 0, 800, 600) << QPoint(1920, 0);
}

void tst_WindowPlace::isTheMiddleOfTheScreen()
{
    QFETCH(QRect, screen);
    QFETCH(QPoint, place);
    QCOMPARE(WindowPlace::inTheMiddleOf(screen, QSize(900, 650)), place);
}

void tst_WindowPlace::wholeIsWholeOnOneScreen()
{
    const QVector<QRect> screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
    QVERIFY(WindowPlace::isWhole({0, 0, 900, 650}, screens));
    QVERIFY(WindowPlace::isWhole({1920, 374, 900, 650}, screens));
    QVERIFY(!WindowPlace::isWhole({1500, 0, 900, 650}, screens)); // on both
    QVERIFY(!WindowPlace::isWhole({0, 500, 900, 650}, screens));
}

QTEST_GUILESS_MAIN(tst_WindowPlace)
#include "tst_WindowPlace.moc"
