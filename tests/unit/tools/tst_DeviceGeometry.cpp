#include "tests/support/main/Main.h"
#include "tools/simulator/DeviceGeometry.h"

#include <QLineF>
#include <QTest>

namespace geometry = simulator::geometry;

class tst_DeviceGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsFoundAtItsCenter();
    void noTwoControlsOverlap();
    void everythingLiesOnTheBody();
    void betweenTheControlsThereIsNothing();
    void knobAnglesGrowClockwiseFromTheTop();
    void aTurnTakesTheShortWayRound();
};

void tst_DeviceGeometry::everyControlIsFoundAtItsCenter()
{
    for (int button = 0; button < geometry::buttonCount; ++button) {
        QCOMPARE(geometry::buttonAt(geometry::buttonCenter(button)), button);
        QVERIFY(!geometry::isOnKnob(geometry::buttonCenter(button)));
    }
    QVERIFY(geometry::isOnKnob(geometry::knobCenter()));
    QCOMPARE(geometry::buttonAt(geometry::knobCenter()), -1);
}

void tst_DeviceGeometry::noTwoControlsOverlap()
{
    for (int a = 0; a < geometry::buttonCount; ++a) {
        const QPointF center = geometry::buttonCenter(a);
        QVERIFY(QLineF(center, geometry::knobCenter()).length() >
                geometry::buttonRadius + geometry::knobRadius);
        for (int b = 0; b < a; ++b) {
            QVERIFY(QLineF(center, geometry::buttonCenter(b)).length() > 2 * geometry::buttonRadius);
        }
    }
}

void tst_DeviceGeometry::everythingLiesOnTheBody()
{
    const qreal margin = geometry::buttonRadius;
    const QRectF inside = geometry::body().adjusted(margin, margin, -margin, -margin);
    for (int button = 0; button < geometry::buttonCount; ++button) {
        QVERIFY(inside.contains(geometry::buttonCenter(button)));
    }
    QVERIFY(geometry::bounds().contains(geometry::body()));
}

void tst_DeviceGeometry::betweenTheControlsThereIsNothing()
{
    const QPointF corner = geometry::body().topLeft();
    QCOMPARE(geometry::buttonAt(corner), -1);
    QVERIFY(!geometry::isOnKnob(corner));
}

void tst_DeviceGeometry::knobAnglesGrowClockwiseFromTheTop()
{
    const QPointF center = geometry::knobCenter();
    QCOMPARE(geometry::knobAngle(center + QPointF(0, -5)), 0.0);
    QCOMPARE(geometry::knobAngle(center + QPointF(5, 0)), 90.0);
    QCOMPARE(geometry::knobAngle(center + QPointF(0, 5)), 180.0);
    QCOMPARE(geometry::knobAngle(center + QPointF(-5, 0)), 270.0);
}

void tst_DeviceGeometry::aTurnTakesTheShortWayRound()
{
    QCOMPARE(geometry::turnBetween(350, 10), 20.0);
    QCOMPARE(geometry::turnBetween(10, 350), -20.0);
    QCOMPARE(geometry::turnBetween(90, 120), 30.0);
}

QTEST_APPLESS_MAIN(tst_DeviceGeometry)
#include "tst_DeviceGeometry.moc"
