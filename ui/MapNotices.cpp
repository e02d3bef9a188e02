#include "ui/MapNotices.h"

#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "ui/PageTexts.h"

#include <QLabel>

MapNotices::MapNotices(QWidget *page)
    : QObject(page)
    , m_update(PageTexts::add(*page, QString(), {680, 64, 200, 16}, PageTexts::Ink::Dim, 10, QFont::Normal))
    , m_notKept(PageTexts::add(*page, QString(), {680, 81, 200, 18}, PageTexts::Ink::Dim, 9, QFont::Normal))
    , m_keep(new ClickableLabel(page))
    , m_failure(
          PageTexts::add(*page, QString(), {680, 119, 200, 18}, PageTexts::Ink::Bright, 9, QFont::DemiBold))
{
    m_update->setObjectName(QStringLiteral("mapNotice"));
    m_update->hide();

    m_notKept->setObjectName(QStringLiteral("notKept"));
    m_notKept->hide();

    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->hide();

    m_keep->setObjectName(QStringLiteral("keep"));
    m_keep->setGeometry(678, 99, 202, 20);
    m_keep->setContentsMargins(2, 0, 0, 0);
    m_keep->setStyleSheet(QStringLiteral("QLabel { color : white; text-decoration: underline; }"));
    m_keep->setFont(m_notKept->font());
    FittingText::show(m_keep, tr("Keep"),
                      tr("Writes what the page shows as the mapping that the program starts with"));
    m_keep->setFixedWidth(m_keep->sizeHint().width() + 4); // no more of the page is to be clicked
    m_keep->hide();
    connect(m_keep, &ClickableLabel::clicked, this, &MapNotices::keep);
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

void MapNotices::showKept()
{
    if (!m_kept) {
        FittingText::show(m_notKept, tr("Your changes end with the program."));
    } else if (m_knobEnds) {
        FittingText::show(
            m_notKept, tr("The knob's encoding ends with the program."),
            tr("All else is kept. What turning the knob sends (the controller's number and the "
               "encoding of \"Midi for Knob\") is no part of a mapping that is read from a file"));
    }
    m_notKept->setVisible(!m_kept || m_knobEnds);
    m_keep->setVisible(!m_kept);
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
