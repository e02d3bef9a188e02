#include "ui/SentLine.h"

#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "ui/SentWords.h"

namespace
{

constexpr int frameMs = 16;

} // namespace

SentLine::SentLine(QWidget *page)
    : QLabel(page)
{
    setObjectName(QStringLiteral("sent"));
    setGeometry(place);
    setFont(Look::font(Look::Face::Page, 10));
    setStyleSheet(QStringLiteral("QLabel { color : rgba(255,255,255,0.87); }"));
    setAlignment(Qt::AlignCenter);
    hide();
    m_nextFrame.setSingleShot(true);
    m_nextFrame.setInterval(frameMs);
    connect(&m_nextFrame, &QTimer::timeout, this, &SentLine::showNow);
    m_end.setSingleShot(true);
    m_end.setInterval(shownMs);
    connect(&m_end, &QTimer::timeout, this, &QWidget::hide);
}

void SentLine::tell(const DoneAction &done)
{
    // The end of a touch and the release of keys have no words, and take none away.
    const bool silent = done.event == DoneAction::Event::LetGo || done.event == DoneAction::Event::Release;
    if ((silent && !done.midi.due) || !parentWidget()->isVisible()) {
        return;
    }
    m_last = done;
    if (!m_nextFrame.isActive()) {
        m_nextFrame.start();
    }
}

void SentLine::showNow()
{
    const QString words = SentWords::of(*m_last);
    if (words.isEmpty()) {
        return;
    }
    if (words != m_told || isHidden()) {
        m_told = words;
        FittingText::show(this, words);
    }
    show();
    m_end.start();
}
