#pragma once

#include <QEasingCurve>
#include <QPoint>
#include <QStackedWidget>

/// A stack of pages that slides from one to the other.
///
/// Has two states, idle and sliding: what is asked for while a slide runs is dropped, not queued. The setters
/// take effect at the next slide.
class SlidingStackedWidget : public QStackedWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SlidingStackedWidget)

public:
    enum t_direction { LEFT2RIGHT, RIGHT2LEFT, TOP2BOTTOM, BOTTOM2TOP, AUTOMATIC };
    Q_ENUM(t_direction)

    explicit SlidingStackedWidget(QWidget *parent = nullptr);

    bool isSliding() const { return m_active; }

Q_SIGNALS:
    void animationFinished();

public Q_SLOTS:
    void setSpeed(int speed); ///< milliseconds
    void setAnimation(QEasingCurve::Type animationtype);
    void setVerticalMode(bool vertical = true);
    void setWrap(bool wrap); ///< whether next and previous go on round the ends
    void slideInNext();
    void slideInPrev();

    /// An index beyond either end is folded into the stack and decides the direction.
    void slideInIdx(int idx, SlidingStackedWidget::t_direction direction = AUTOMATIC);

protected Q_SLOTS:
    void animationDoneSlot();

private:
    void slideInWgt(QWidget *page, t_direction direction);
    QPoint offset(t_direction direction) const;

    QWidget *m_mainwindow;
    int m_speed = 500;
    QEasingCurve::Type m_animationtype = QEasingCurve::OutQuart;
    bool m_vertical = false;
    int m_now = 0;
    int m_next = 0;
    bool m_wrap = false;
    QPoint m_pnow;
    bool m_active = false;
};
