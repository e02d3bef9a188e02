#include "ui/SentLine.h"

#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "ui/SentWords.h"

SentLine::SentLine(QWidget *page)
    : QLabel(page)
{
    setObjectName(QStringLiteral("sent"));
    setGeometry(place);
    setFont(Look::font(Look::Face::Page, 10));
    setStyleSheet(QStringLiteral("QLabel { color : rgba(255,255,255,0.87); }"));
    setAlignment(Qt::AlignCenter);
    hide();
    connect(&m_nextFrame, &QTimer::timeout, this, &SentLine::showNow);
    m_end.setSingleShot(true);
    m_end.setInterval(shownMs);
    connect(&m_end, &QTimer::timeout, this, &QWidget::hide);
}

void SentLine::tell(const DoneAction &done)
{
    // What has no words takes none away.
    if (SentWords::has(done) && parentWidget()->isVisible()) {
        m_last = done;
        m_nextFrame.request();
    }
}

void SentLine::showNow()
{
    const QString words = SentWords::of(*m_last);
    if (words != m_told || isHidden()) {
        m_told = words;
        FittingText::show(this, words);
    }
    show();
    m_end.start();
}
