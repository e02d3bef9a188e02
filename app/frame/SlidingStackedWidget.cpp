#include "app/frame/SlidingStackedWidget.h"

#include "app/frame/FrameLog.h"

#include <QParallelAnimationGroup>
#include <QPropertyAnimation>

SlidingStackedWidget::SlidingStackedWidget(QWidget *parent)
    : QStackedWidget(parent)
    , m_mainwindow(parent)
{
    if (!parent) {
        m_mainwindow = this;
        qCInfo(lcFrame) << "ATTENTION: untested mainwindow case !";
    }
}

void SlidingStackedWidget::setSpeed(int speed)
{
    m_speed = speed;
}

void SlidingStackedWidget::setAnimation(QEasingCurve::Type animationtype)
{
    m_animationtype = animationtype;
}

void SlidingStackedWidget::setVerticalMode(bool vertical)
{
    m_vertical = vertical;
}

void SlidingStackedWidget::setWrap(bool wrap)
{
    m_wrap = wrap;
}

void SlidingStackedWidget::slideInNext()
{
    if (m_wrap || currentIndex() < count() - 1) {
        slideInIdx(currentIndex() + 1);
    }
}

void SlidingStackedWidget::slideInPrev()
{
    if (m_wrap || currentIndex() > 0) {
        slideInIdx(currentIndex() - 1);
    }
}

void SlidingStackedWidget::slideInIdx(int idx, t_direction direction)
{
    if (count() == 0) {
        return;
    }
    if (idx > count() - 1) {
        direction = m_vertical ? TOP2BOTTOM : RIGHT2LEFT;
        idx = idx % count();
    } else if (idx < 0) {
        direction = m_vertical ? BOTTOM2TOP : LEFT2RIGHT;
        idx = (idx + count()) % count();
    }
    if (QWidget *page = widget(idx)) { // none when the index lies more than one round below 0
        slideInWgt(page, direction);
    }
}

QPoint SlidingStackedWidget::offset(t_direction direction) const
{
    switch (direction) {
    case LEFT2RIGHT:
        return {frameRect().width(), 0};
    case RIGHT2LEFT:
        return {-frameRect().width(), 0};
    case TOP2BOTTOM:
        return {0, frameRect().height()};
    default:
        return {0, -frameRect().height()};
    }
}

void SlidingStackedWidget::slideInWgt(QWidget *page, t_direction direction)
{
    if (m_active) {
        return;
    }
    m_now = currentIndex();
    m_next = indexOf(page);
    if (m_now == m_next) {
        return;
    }
    m_active = true;

    if (direction == AUTOMATIC) {
        if (m_now < m_next) {
            direction = m_vertical ? TOP2BOTTOM : RIGHT2LEFT;
        } else {
            direction = m_vertical ? BOTTOM2TOP : LEFT2RIGHT;
        }
    }
    QWidget *leaving = widget(m_now);
    page->setGeometry(0, 0, frameRect().width(), frameRect().height());

    const QPoint way = offset(direction);
    const QPoint pnext = page->pos();
    m_pnow = leaving->pos();
    page->move(pnext - way);
    page->show();
    page->raise();

    const auto animate = [this](QWidget *target, QPoint from, QPoint to) {
        auto *animation = new QPropertyAnimation(target, "pos");
        animation->setDuration(m_speed);
        animation->setEasingCurve(m_animationtype);
        animation->setStartValue(from);
        animation->setEndValue(to);
        return animation;
    };
    auto *group = new QParallelAnimationGroup(this);
    group->addAnimation(animate(leaving, m_pnow, m_pnow + way));
    // The vertical start lies on the other side than the place where the page was put: in vertical mode the
    // arriving page jumps before it slides. Deliberate.
    group->addAnimation(animate(page, QPoint(pnext.x() - way.x(), pnext.y() + way.y()), pnext));
    connect(group, &QParallelAnimationGroup::finished, this, &SlidingStackedWidget::animationDoneSlot);
    group->start(QAbstractAnimation::DeleteWhenStopped);
}

void SlidingStackedWidget::animationDoneSlot()
{
    setCurrentIndex(m_next);
    if (QWidget *left = widget(m_now)) {
        left->hide();
        left->move(m_pnow);
    }
    m_active = false;
    Q_EMIT animationFinished();
}
