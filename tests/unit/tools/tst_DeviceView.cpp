#include "tests/support/main/Main.h"
#include "tests/unit/tools/FakePort.h"
#include "tools/simulator/DeviceGeometry.h"
#include "tools/simulator/DeviceView.h"
#include "tools/simulator/DeviceWindow.h"
#include "tools/simulator/VirtualDevice.h"

#include <QLabel>
#include <QTest>
#include <QWheelEvent>
#include <QtMath>

#include <cmath>

namespace geometry = simulator::geometry;

class tst_DeviceView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theMousePressesAButton();
    void aButtonLeftWithTheMouseIsReleasedWithIt();
    void twoQuickClicksAreTwoPresses();
    void aRightClickLatchesAndTheNextReleases();
    void ctrlClickLatches();
    void aClickOnALatchedButtonReleasesIt();
    void digitKeysAreButtons();
    void autoRepeatIsIgnored();
    void shortcutsOfTheWindowAreNoButtons();
    void aButtonHeldTwiceIsReleasedWithTheLast();
    void losingTheFocusReleasesTheKeysButNotTheLatches();
    void theMouseTouchesAndTurnsTheKnob();
    void theWheelTouchesTurnsAndLetsGo();
    void arrowKeysTurnAndBlankTouches();
    void theDrawingShowsAPress();
    void theWindowShowsTheStateOfTheCable();

private:
    QPoint at(int button) const { return m_view->toWidget(geometry::buttonCenter(button)).toPoint(); }
    QPoint onKnob(qreal degrees) const;
    QByteArrayList taken() { return m_port->take(); }

    std::unique_ptr<FakePort> m_port;
    std::unique_ptr<simulator::VirtualDevice> m_device;
    std::unique_ptr<simulator::DeviceView> m_view;
};

void tst_DeviceView::init()
{
    m_view.reset();
    m_device.reset();
    m_port = std::make_unique<FakePort>();
    m_device = std::make_unique<simulator::VirtualDevice>(*m_port);
    m_view = std::make_unique<simulator::DeviceView>(*m_device);
    m_view->resize(m_view->sizeHint());
    m_view->show();
}

QPoint tst_DeviceView::onKnob(qreal degrees) const
{
    const qreal angle = qDegreesToRadians(degrees);
    return m_view->toWidget(geometry::knobCenter() + 12 * QPointF(std::sin(angle), -std::cos(angle)))
        .toPoint();
}

void tst_DeviceView::theMousePressesAButton()
{
    for (int button = 0; button < geometry::buttonCount; ++button) {
        const QByteArray number = QByteArray::number(button);
        QTest::mousePress(m_view.get(), Qt::LeftButton, {}, at(button));
        QCOMPARE(taken(), QByteArrayList{"BP" + number});
        QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, at(button));
        QCOMPARE(taken(), QByteArrayList{"BR" + number});
    }
}

void tst_DeviceView::aButtonLeftWithTheMouseIsReleasedWithIt()
{
    QTest::mousePress(m_view.get(), Qt::LeftButton, {}, at(3));
    QTest::mouseMove(m_view.get(), at(8));
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, at(8));
    QCOMPARE(taken(), (QByteArrayList{"BP3", "BR3"}));
}

void tst_DeviceView::twoQuickClicksAreTwoPresses()
{
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, at(3));
    // Of a second click that comes soon, the toolkit makes this instead of a press.
    QMouseEvent second(QEvent::MouseButtonDblClick, at(3), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_view.get(), &second);
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, at(3));
    QCOMPARE(taken(), (QByteArrayList{"BP3", "BR3", "BP3", "BR3"}));
}

void tst_DeviceView::aRightClickLatchesAndTheNextReleases()
{
    QTest::mouseClick(m_view.get(), Qt::RightButton, {}, at(5));
    QCOMPARE(taken(), QByteArrayList{"BP5"});
    QTest::mouseClick(m_view.get(), Qt::RightButton, {}, at(5));
    QCOMPARE(taken(), QByteArrayList{"BR5"});
}

void tst_DeviceView::ctrlClickLatches()
{
    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::ControlModifier, at(5));
    QCOMPARE(taken(), QByteArrayList{"BP5"});
}

void tst_DeviceView::aClickOnALatchedButtonReleasesIt()
{
    QTest::mouseClick(m_view.get(), Qt::RightButton, {}, at(5));
    taken();
    QTest::mouseClick(m_view.get(), Qt::LeftButton, {}, at(5));
    QCOMPARE(taken(), QByteArrayList{"BR5"});
}

void tst_DeviceView::digitKeysAreButtons()
{
    for (int button = 0; button < geometry::buttonCount; ++button) {
        QTest::keyClick(m_view.get(), static_cast<Qt::Key>(Qt::Key_0 + button));
        QCOMPARE(taken(),
                 (QByteArrayList{"BP" + QByteArray::number(button), "BR" + QByteArray::number(button)}));
    }
}

void tst_DeviceView::autoRepeatIsIgnored()
{
    QTest::keyPress(m_view.get(), Qt::Key_7);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent up(QEvent::KeyRelease, Qt::Key_7, Qt::NoModifier, QString(), true);
        QKeyEvent down(QEvent::KeyPress, Qt::Key_7, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(m_view.get(), &up);
        QCoreApplication::sendEvent(m_view.get(), &down);
    }
    QCOMPARE(taken(), QByteArrayList{"BP7"});
    QTest::keyRelease(m_view.get(), Qt::Key_7);
    QCOMPARE(taken(), QByteArrayList{"BR7"});
}

void tst_DeviceView::shortcutsOfTheWindowAreNoButtons()
{
    QTest::keyClick(m_view.get(), Qt::Key_7, Qt::ControlModifier);
    QVERIFY(taken().isEmpty());
}

void tst_DeviceView::aButtonHeldTwiceIsReleasedWithTheLast()
{
    QTest::keyPress(m_view.get(), Qt::Key_2);
    QTest::mousePress(m_view.get(), Qt::LeftButton, {}, at(2));
    QTest::keyRelease(m_view.get(), Qt::Key_2);
    QCOMPARE(taken(), QByteArrayList{"BP2"});
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, at(2));
    QCOMPARE(taken(), QByteArrayList{"BR2"});
}

void tst_DeviceView::losingTheFocusReleasesTheKeysButNotTheLatches()
{
    QTest::mouseClick(m_view.get(), Qt::RightButton, {}, at(1));
    QTest::keyPress(m_view.get(), Qt::Key_2);
    QTest::keyPress(m_view.get(), Qt::Key_Space);
    taken();
    QFocusEvent focusOut(QEvent::FocusOut);
    QCoreApplication::sendEvent(m_view.get(), &focusOut);
    QCOMPARE(taken(), (QByteArrayList{"BR2", "KNU"}));
}

void tst_DeviceView::theMouseTouchesAndTurnsTheKnob()
{
    QTest::mousePress(m_view.get(), Qt::LeftButton, {}, onKnob(0));
    QCOMPARE(taken(), QByteArrayList{"KND"});
    for (const int degrees : {20, 40, 50}) {
        QMouseEvent move(QEvent::MouseMove, onKnob(degrees), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.get(), &move);
    }
    QCOMPARE(taken(), (QByteArrayList{"KNR", "KNR", "KNR"}));
    QMouseEvent back(QEvent::MouseMove, onKnob(10), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_view.get(), &back);
    QCOMPARE(taken(), (QByteArrayList{"KNL", "KNL"}));
    QTest::mouseRelease(m_view.get(), Qt::LeftButton, {}, onKnob(10));
    QTRY_COMPARE(m_port->log, QByteArrayList{"KNU"});
}

void tst_DeviceView::theWheelTouchesTurnsAndLetsGo()
{
    const QPointF position = m_view->toWidget(geometry::knobCenter());
    for (const int delta : {120, 120, -60, -60}) {
        QWheelEvent wheel(position, position, QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_view.get(), &wheel);
    }
    QCOMPARE(taken(), (QByteArrayList{"KND", "KNR", "KNR", "KNL"}));
    QTRY_COMPARE(m_port->log, QByteArrayList{"KNU"});
}

void tst_DeviceView::arrowKeysTurnAndBlankTouches()
{
    QTest::keyPress(m_view.get(), Qt::Key_Space);
    QTest::keyClick(m_view.get(), Qt::Key_Left);
    QTest::keyClick(m_view.get(), Qt::Key_Right);
    QCOMPARE(taken(), (QByteArrayList{"KND", "KNL", "KNR"}));
    QTest::keyRelease(m_view.get(), Qt::Key_Space);
    QTRY_COMPARE(m_port->log, QByteArrayList{"KNU"});
}

void tst_DeviceView::theDrawingShowsAPress()
{
    const QImage before = m_view->grab().toImage();
    m_device->setButton(4, true);
    const QImage after = m_view->grab().toImage();
    const QPoint edgeOfCap = m_view->toWidget(geometry::buttonCenter(4) + QPointF(0, 8)).toPoint();
    QVERIFY(before.pixelColor(edgeOfCap) != after.pixelColor(edgeOfCap));
    QVERIFY(after.pixelColor(edgeOfCap).lightness() > before.pixelColor(edgeOfCap).lightness() + 20);
    const QPoint other = m_view->toWidget(geometry::buttonCenter(7) + QPointF(0, 8)).toPoint();
    QCOMPARE(before.pixelColor(other), after.pixelColor(other));
}

void tst_DeviceView::theWindowShowsTheStateOfTheCable()
{
    simulator::DeviceWindow window(*m_device, QStringLiteral("/run/device"));
    const auto texts = [&window] {
        QStringList all;
        for (const QLabel *label : window.findChildren<QLabel *>()) {
            all.append(label->text());
        }
        return all;
    };
    QVERIFY(texts().contains(QStringLiteral("In use")));
    QVERIFY(texts().contains(QStringLiteral("/run/device")));
    m_port->opened = false;
    m_device->portStateChanged();
    QVERIFY(texts().contains(QStringLiteral("Waiting for the program")));
    m_device->setPlugged(false);
    QVERIFY(texts().contains(QStringLiteral("Unplugged")));
    m_device->setButton(3, true);
    QVERIFY(texts().contains(QStringLiteral("BP3")));
}

QTEST_MAIN(tst_DeviceView)
#include "tst_DeviceView.moc"
