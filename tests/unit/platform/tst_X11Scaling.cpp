#include "engine/platform/x11/X11Scaling.h"
#include "tests/support/main/Main.h"

#include <QTest>

class tst_X11Scaling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWindowThatFitsIsLeftAlone_data();
    void aWindowThatFitsIsLeftAlone();
    void oneThatDoesNotIsCapped_data();
    void oneThatDoesNotIsCapped();
    void theFactorIsTheToolkits();

private:
    static QByteArray capped(int width, int height, double factor)
    {
        return X11Scaling::cappedFactors({{"HDMI-1", width, height}}, factor, 900, 650);
    }
};

void tst_X11Scaling::aWindowThatFitsIsLeftAlone_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<double>("factor");
    QTest::newRow("just so") << 900 << 650 << 1.0;
    QTest::newRow("usual") << 1920 << 1080 << 1.0;
    QTest::newRow("twice") << 3840 << 2160 << 2.0;
    QTest::newRow("twice, just so") << 1800 << 1300 << 2.0;
}

void tst_X11Scaling::aWindowThatFitsIsLeftAlone()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(double, factor);
    QCOMPARE(capped(width, height, factor), QByteArray());
}

void tst_X11Scaling::oneThatDoesNotIsCapped_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("netbook") << 1024 << 600 << 1.0 << QByteArray("HDMI-1=0.92");
    QTest::newRow("small") << 800 << 600 << 1.0 << QByteArray("HDMI-1=0.88");
    QTest::newRow("twice on a laptop") << 1366 << 768 << 2.0 << QByteArray("HDMI-1=1.18");
    QTest::newRow("a pixel too low") << 900 << 649 << 1.0 << QByteArray("HDMI-1=0.99");
}

void tst_X11Scaling::oneThatDoesNotIsCapped()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(double, factor);
    QFETCH(QByteArray, expected);
    QCOMPARE(capped(width, height, factor), expected);
    const double got = expected.mid(expected.indexOf('=') + 1).toDouble();
    QVERIFY(900 * got <= width && 650 * got <= height);
    QCOMPARE(X11Scaling::cappedFactors({{"A", 1920, 1080}, {"B", 800, 600}, {"C", 640, 480}}, 1.0, 900, 650),
             QByteArray("B=0.88;C=0.71"));
}

void tst_X11Scaling::theFactorIsTheToolkits()
{
    QCOMPARE(X11Scaling::factorFor(96), 1.0);
    QCOMPARE(X11Scaling::factorFor(100), 1.0);
    QCOMPARE(X11Scaling::factorFor(72), 1.0);
    QCOMPARE(X11Scaling::factorFor(192), 2.0);
}

QTEST_GUILESS_MAIN(tst_X11Scaling)
#include "tst_X11Scaling.moc"
