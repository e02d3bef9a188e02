#include "tests/support/main/Main.h"
#include "ui/SensitivitySlider.h"

#include <QStyle>
#include <QTest>

#include <memory>

class tst_SensitivitySlider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aClickCountsAtEveryHeight();
    void aDragBeginsAtEveryHeight();
    void homeAndEndGoWhereTheyPoint();

private:
    int at(int value) const // where the handle is for it
    {
        const int length = m_slider->style()->pixelMetric(QStyle::PM_SliderLength, nullptr, m_slider.get());
        return QStyle::sliderPositionFromValue(1, 100, value, m_slider->width() - length, true) + length / 2;
    }

    std::unique_ptr<SensitivitySlider> m_slider;
};

void tst_SensitivitySlider::init()
{
    m_slider = std::make_unique<SensitivitySlider>();
    m_slider->resize(176, 16);
    m_slider->setRange(1, 100);
    m_slider->setInvertedAppearance(true);
    m_slider->setInvertedControls(true);
    m_slider->setValue(50);
    m_slider->show();
}

void tst_SensitivitySlider::aClickCountsAtEveryHeight()
{
    for (int y = 0; y < m_slider->height(); ++y) {
        m_slider->setValue(50);
        QTest::mouseClick(m_slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(at(90), y));
        QVERIFY2(m_slider->value() > 50, qPrintable(QString::number(y)));
        m_slider->setValue(50);
        QTest::mouseClick(m_slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(at(10), y));
        QVERIFY2(m_slider->value() < 50, qPrintable(QString::number(y)));
    }
}

void tst_SensitivitySlider::aDragBeginsAtEveryHeight()
{
    for (int y = 0; y < m_slider->height(); ++y) {
        m_slider->setValue(50);
        QTest::mousePress(m_slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(at(50), y));
        QMouseEvent move(QEvent::MouseMove, QPointF(at(80), y), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_slider.get(), &move);
        QTest::mouseRelease(m_slider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(at(80), y));
        QVERIFY2(qAbs(m_slider->value() - 80) <= 3, qPrintable(QString::number(m_slider->value())));
    }
}

void tst_SensitivitySlider::homeAndEndGoWhereTheyPoint()
{
    QTest::keyClick(m_slider.get(), Qt::Key_Home); // the left end, where the highest value is
    QCOMPARE(m_slider->value(), 100);
    QTest::keyClick(m_slider.get(), Qt::Key_End);
    QCOMPARE(m_slider->value(), 1);
    m_slider->setInvertedAppearance(false);
    QTest::keyClick(m_slider.get(), Qt::Key_Home);
    QCOMPARE(m_slider->value(), 1);
    QTest::keyClick(m_slider.get(), Qt::Key_End);
    QCOMPARE(m_slider->value(), 100);
}

QTEST_MAIN(tst_SensitivitySlider)

#include "tst_SensitivitySlider.moc"
