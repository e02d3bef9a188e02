#include "ui/MapNotices.h"

#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "ui/PageTexts.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QLabel>

namespace
{

constexpr int smallestName = 30; // pixels

} // namespace

MapNotices::MapNotices(QWidget *page)
    : QObject(page)
    , m_update(
          PageTexts::add(*page, QString(), {680, 64, 200, 16}, PageTexts::Ink::Bright, 10, QFont::Normal))
    , m_notKept(
          PageTexts::add(*page, QString(), {680, 81, 200, 18}, PageTexts::Ink::Bright, 9, QFont::Normal))
    , m_keep(new ClickableLabel(page))
    , m_undo(new ClickableLabel(page))
    , m_failure(
          PageTexts::add(*page, QString(), {680, 119, 200, 18}, PageTexts::Ink::Bright, 9, QFont::DemiBold))
    , m_stepEnd(this)
{
    m_update->setObjectName(QStringLiteral("mapNotice"));
    m_update->hide();

    m_notKept->setObjectName(QStringLiteral("notKept"));
    m_notKept->hide();

    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->hide();

    m_keep->setObjectName(QStringLiteral("keep"));
    buildLink(*m_keep, tr("Keep"),
              tr("Writes what the page shows as the mapping that the program starts with"));
    connect(m_keep, &ClickableLabel::clicked, this, &MapNotices::keep);

    m_undo->setObjectName(QStringLiteral("undo"));
    buildLink(*m_undo, tr("Undo"), tr("Takes back what was done last (Ctrl+Z)"));
    connect(m_undo, &ClickableLabel::clicked, this, &MapNotices::undo);

    m_stepEnd.setSingleShot(true);
    connect(&m_stepEnd, &QTimer::timeout, this, &MapNotices::endStep);
}

void MapNotices::buildLink(ClickableLabel &link, const QString &text, const QString &help)
{
    link.setGeometry(678, 99, 202, 20);
    link.setContentsMargins(2, 0, 0, 0);
    link.setStyleSheet(QStringLiteral("QLabel { color : white; text-decoration: underline; }"));
    link.setFont(m_notKept->font());
    FittingText::show(&link, text, help);
    link.setFixedWidth(link.sizeHint().width() + 4); // no more of the page is to be clicked
    link.hide();
}

void MapNotices::showUpdating()
{
    FittingText::show(m_update, tr("Updating maps"));
    m_update->show();
}

void MapNotices::endUpdating(bool newMaps)
{
    m_update->setVisible(newMaps);
    if (newMaps) {
        FittingText::show(m_update, tr("New maps available!"));
    }
}

void MapNotices::hideUpdate()
{
    m_update->hide();
}

void MapNotices::setKept(bool kept)
{
    m_kept = kept;
    if (kept) {
        setFailure(Task::Keep, QString()); // it does not matter any more
    }
    showKept();
}

void MapNotices::setKnobEnds(bool ends)
{
    m_knobEnds = ends;
    showKept();
}

void MapNotices::sayStep(const Words &words, bool offersUndo, const Words &untilKept)
{
    m_step = words;
    m_untilKept = untilKept;
    m_undo->setVisible(offersUndo);
    m_stepEnd.start(stepShown);
    showKept();
    QAccessibleEvent said(m_notKept, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void MapNotices::forgetStep()
{
    m_stepEnd.stop();
    m_step = {};
    m_untilKept = {};
    m_undo->hide();
    showKept();
}

void MapNotices::endStep()
{
    if (m_undo->isVisible() && (m_undo->hasFocus() || m_undo->underMouse())) {
        m_stepEnd.start(stepShown); // whoever is about to press it
        return;
    }
    m_step = {};
    m_undo->hide();
    showKept();
}

void MapNotices::showKept()
{
    m_notKept->setVisible(!m_step.sentence.isEmpty() || !m_kept || m_knobEnds);
    m_keep->setVisible(!m_kept);
    m_undo->move(m_kept ? m_keep->x() : m_keep->geometry().right() + 12, m_keep->y());
    if (!m_kept && !m_untilKept.sentence.isEmpty()) {
        show(m_untilKept);
    } else if (!m_step.sentence.isEmpty()) {
        show(m_step);
    } else if (!m_kept) {
        FittingText::show(m_notKept, tr("Your changes end with the program."));
    } else if (m_knobEnds) {
        FittingText::show(
            m_notKept, tr("The knob's encoding ends with the program."),
            tr("All else is kept. What turning the knob sends (the controller's number and the "
               "encoding of \"Midi for Knob\") is no part of a mapping that is read from a file"));
    }
}

// The sentence is never cut: the name is.
void MapNotices::show(const Words &words)
{
    QFont font = m_notKept->font();
    font.setStretch(QFont::Unstretched);
    const QFontMetrics metrics(font);
    const QString whole = words.sentence.arg(words.name);
    const int rest = metrics.horizontalAdvance(words.sentence.arg(QString()));
    const QString name = metrics.elidedText(words.name, Qt::ElideRight,
                                            qMax(smallestName, m_notKept->width() * 100 / 82 - rest));
    FittingText::show(m_notKept, words.sentence.arg(name), name == words.name ? QString() : whole);
    m_notKept->setAccessibleName(whole);
}

void MapNotices::setFailure(Task task, const QString &words)
{
    if (words.isEmpty()) {
        m_failures.remove(task);
    } else {
        m_failures[task] = words;
    }
    QStringList all = m_failures.values();
    m_failure->setVisible(!all.isEmpty());
    if (!all.isEmpty()) {
        const QString first = all.takeFirst();
        FittingText::show(m_failure, first, all.join(QLatin1Char('\n')));
    }
}

QWidget *MapNotices::keepButton() const
{
    return m_keep;
}

QWidget *MapNotices::undoButton() const
{
    return m_undo;
}
