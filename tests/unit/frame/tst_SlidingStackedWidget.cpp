#include "app/frame/SlidingStackedWidget.h"
#include "tests/support/main/Main.h"

#include <QLabel>
#include <QPropertyAnimation>
#include <QSignalSpy>
#include <QTest>

using Stack = SlidingStackedWidget;

class tst_SlidingStackedWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void slidesToAHigherPageFromTheRight();
    void slidesToALowerPageFromTheLeft();
    void indexBeyondTheEndSlidesRoundFromTheRight();
    void indexBelowZeroSlidesRoundFromTheLeft();
    void nextOnTheLastPageWithoutWrapDoesNothing();
    void nextOnTheLastPageWithWrapSlidesToTheFirst();
    void previousOnTheFirstPageWithoutWrapDoesNothing();
    void previousOnTheFirstPageWithWrapSlidesToTheLast();
    void requestsWhileSlidingAreDropped();
    void slideToTheSamePageDoesNothing();
    void verticalArrivalJumpsToTheOtherSide();
    void afterTheSlideTheOldPageIsHiddenAndBackInPlace();
    void beyondTheEndsAVerticalStackGoesOnUpAndDown();
    void bothPagesMoveForHalfASecondAndSlowDown();
    void settingsAreThoseOfTheNextSlide();
    void stackWithoutParentSaysSo();

private:
    bool finish();
    const QPropertyAnimation *animationOf(int page) const;

    std::unique_ptr<QWidget> m_window;
    Stack *m_stack = nullptr;
};

void tst_SlidingStackedWidget::init()
{
    m_window = std::make_unique<QWidget>();
    m_window->resize(900, 650);
    m_stack = new Stack(m_window.get());
    m_stack->resize(900, 650);
    for (int page = 0; page < 3; ++page) {
        m_stack->addWidget(new QWidget(m_stack));
    }
    m_stack->setSpeed(40);
    m_window->show();
}

bool tst_SlidingStackedWidget::finish()
{
    QSignalSpy spy(m_stack, &Stack::animationFinished);
    return spy.wait(2000);
}

// Of the slide that is running.
const QPropertyAnimation *tst_SlidingStackedWidget::animationOf(int page) const
{
    const QPropertyAnimation *found = nullptr;
    for (const QPropertyAnimation *each : m_stack->findChildren<QPropertyAnimation *>()) {
        if (each->targetObject() == m_stack->widget(page) && each->state() == QAbstractAnimation::Running) {
            found = each;
        }
    }
    return found;
}

void tst_SlidingStackedWidget::slidesToAHigherPageFromTheRight()
{
    m_stack->slideInIdx(1);
    QVERIFY(m_stack->isSliding());
    QVERIFY(m_stack->widget(1)->x() > 0);
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 1);
    QCOMPARE(m_stack->widget(1)->pos(), QPoint(0, 0));
}

void tst_SlidingStackedWidget::slidesToALowerPageFromTheLeft()
{
    m_stack->setCurrentIndex(2);
    m_stack->slideInIdx(0);
    QVERIFY(m_stack->widget(0)->x() < 0);
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 0);
}

void tst_SlidingStackedWidget::indexBeyondTheEndSlidesRoundFromTheRight()
{
    m_stack->setCurrentIndex(2);
    m_stack->slideInIdx(3);
    QVERIFY(m_stack->widget(0)->x() > 0); // AUTOMATIC would come from the left
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 0);
}

void tst_SlidingStackedWidget::indexBelowZeroSlidesRoundFromTheLeft()
{
    m_stack->slideInIdx(-1);
    QVERIFY(m_stack->widget(2)->x() < 0);
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 2);
}

void tst_SlidingStackedWidget::nextOnTheLastPageWithoutWrapDoesNothing()
{
    m_stack->setCurrentIndex(2);
    m_stack->slideInNext();
    QVERIFY(!m_stack->isSliding());
    QCOMPARE(m_stack->currentIndex(), 2);
}

void tst_SlidingStackedWidget::nextOnTheLastPageWithWrapSlidesToTheFirst()
{
    m_stack->setWrap(true);
    m_stack->setCurrentIndex(2);
    m_stack->slideInNext();
    QVERIFY(m_stack->widget(0)->x() > 0);
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 0);
}

void tst_SlidingStackedWidget::previousOnTheFirstPageWithoutWrapDoesNothing()
{
    m_stack->slideInPrev();
    QVERIFY(!m_stack->isSliding());
}

void tst_SlidingStackedWidget::previousOnTheFirstPageWithWrapSlidesToTheLast()
{
    m_stack->setWrap(true);
    m_stack->slideInPrev();
    QVERIFY(m_stack->widget(2)->x() < 0);
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 2);
}

void tst_SlidingStackedWidget::requestsWhileSlidingAreDropped()
{
    m_stack->slideInIdx(1);
    m_stack->slideInIdx(2);
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 1);
    QVERIFY(!m_stack->isSliding());
}

void tst_SlidingStackedWidget::slideToTheSamePageDoesNothing()
{
    QSignalSpy spy(m_stack, &Stack::animationFinished);
    m_stack->slideInIdx(0);
    QVERIFY(!m_stack->isSliding());
    QCOMPARE(spy.size(), 0);
}

void tst_SlidingStackedWidget::verticalArrivalJumpsToTheOtherSide()
{
    m_stack->setVerticalMode();
    m_stack->setSpeed(10000);
    m_stack->slideInIdx(1);
    // Put at -650, and animated from +650: the jump that belongs to it.
    QTRY_VERIFY(m_stack->widget(1)->y() > 0);
    QVERIFY(m_stack->widget(0)->y() >= 0);
    QCOMPARE(m_stack->widget(1)->x(), 0);
}

void tst_SlidingStackedWidget::afterTheSlideTheOldPageIsHiddenAndBackInPlace()
{
    m_stack->slideInIdx(1);
    QVERIFY(finish());
    QVERIFY(m_stack->widget(0)->isHidden());
    QCOMPARE(m_stack->widget(0)->pos(), QPoint(0, 0));
}

void tst_SlidingStackedWidget::beyondTheEndsAVerticalStackGoesOnUpAndDown()
{
    m_stack->setVerticalMode();
    m_stack->slideInIdx(-1, Stack::LEFT2RIGHT); // the index decides, not what is asked for
    QCOMPARE(animationOf(0)->endValue().toPoint(), QPoint(0, -650));
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 2);
    m_stack->slideInIdx(3, Stack::RIGHT2LEFT);
    QCOMPARE(animationOf(2)->endValue().toPoint(), QPoint(0, 650));
    QVERIFY(finish());
    QCOMPARE(m_stack->currentIndex(), 0);
}

void tst_SlidingStackedWidget::bothPagesMoveForHalfASecondAndSlowDown()
{
    auto *stack = new Stack(m_window.get());
    stack->addWidget(new QWidget(stack));
    stack->addWidget(new QWidget(stack));
    stack->slideInIdx(1);
    const auto animations = stack->findChildren<QPropertyAnimation *>();
    QCOMPARE(animations.size(), 2);
    for (const QPropertyAnimation *animation : animations) {
        QCOMPARE(animation->duration(), 500);
        QCOMPARE(animation->easingCurve().type(), QEasingCurve::OutQuart);
    }
}

void tst_SlidingStackedWidget::settingsAreThoseOfTheNextSlide()
{
    m_stack->setSpeed(300);
    m_stack->setAnimation(QEasingCurve::Linear);
    m_stack->slideInIdx(1);
    m_stack->setSpeed(1);
    m_stack->setAnimation(QEasingCurve::InQuad);
    for (const int page : {0, 1}) {
        QCOMPARE(animationOf(page)->duration(), 300);
        QCOMPARE(animationOf(page)->easingCurve().type(), QEasingCurve::Linear);
    }
    QVERIFY(finish());
    m_stack->slideInIdx(0);
    QCOMPARE(animationOf(0)->duration(), 1);
    QCOMPARE(animationOf(0)->easingCurve().type(), QEasingCurve::InQuad);
}

void tst_SlidingStackedWidget::stackWithoutParentSaysSo()
{
    QTest::ignoreMessage(QtInfoMsg, "ATTENTION: untested mainwindow case !");
    const Stack alone;
    QCOMPARE(alone.count(), 0);
}

QTEST_MAIN(tst_SlidingStackedWidget)
#include "tst_SlidingStackedWidget.moc"
