#include "ui/ScreenNote.h"

#include "app/frame/Look.h"

#include <QCursor>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

namespace
{

constexpr QSize margin(28, 14);
constexpr int aboveTheEdge = 60; // of the screen's usable part

} // namespace

ScreenNote::ScreenNote()
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus |
                           Qt::BypassWindowManagerHint)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    setFont(Look::font(Look::Face::Page, 16));
    m_end.setSingleShot(true);
    m_end.setInterval(shownFor);
    connect(&m_end, &QTimer::timeout, this, &QWidget::hide);
}

void ScreenNote::say(const QString &text)
{
    m_text = text;
    setAccessibleName(text);
    place();
    show();
    raise();
    update();
    m_end.start();
}

void ScreenNote::place()
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    const QRect usable = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    const QFontMetrics metrics(font());
    const QSize size = QSize(metrics.horizontalAdvance(m_text), metrics.height()) + 2 * margin;
    setGeometry(
        QRect(QPoint(usable.center().x() - size.width() / 2, usable.bottom() - aboveTheEdge - size.height()),
              size));
}

void ScreenNote::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Look::accent);
    painter.setPen(Qt::white);
    painter.setFont(font());
    painter.drawText(rect(), Qt::AlignCenter, m_text);
}
