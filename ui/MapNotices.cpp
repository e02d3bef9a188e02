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
{
    m_update->setObjectName(QStringLiteral("mapNotice"));
    m_update->hide();

    m_notKept->setObjectName(QStringLiteral("notKept"));
    FittingText::show(m_notKept, tr("Your changes end with the program."));
    m_notKept->hide();

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
    m_notKept->setVisible(!kept);
    m_keep->setVisible(!kept);
}

QWidget *MapNotices::keepButton() const
{
    return m_keep;
}
