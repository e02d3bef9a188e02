#include "ui/MapNotices.h"

#include "app/frame/FittingText.h"
#include "ui/PageTexts.h"

#include <QLabel>

MapNotices::MapNotices(QWidget *page)
    : QObject(page)
    , m_update(PageTexts::add(*page, QString(), {680, 68, 200, 18}, PageTexts::Ink::Dim, 10, QFont::Normal))
    , m_notKept(PageTexts::add(*page, QString(), {680, 86, 200, 40}, PageTexts::Ink::Dim, 9, QFont::Normal))
{
    m_update->setObjectName(QStringLiteral("mapNotice"));
    m_update->hide();

    m_notKept->setObjectName(QStringLiteral("notKept"));
    m_notKept->setTextFormat(Qt::RichText);
    m_notKept->setWordWrap(true);
    m_notKept->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    m_notKept->setText(
        tr("Your changes end with the program. %1")
            .arg(QStringLiteral("<a href=\"keep\" style=\"color:#ffffff\">%1</a>").arg(tr("Keep"))));
    m_notKept->setToolTip(tr("Writes what the page shows as the mapping that the program starts with"));
    m_notKept->hide();
    connect(m_notKept, &QLabel::linkActivated, this, &MapNotices::keep);
}

void MapNotices::showUpdating()
{
    FittingText::show(m_update, tr("Updating maps"));
    m_update->show();
}

void MapNotices::endUpdating(bool newMaps)
{
    FittingText::show(m_update, tr("New maps available!"));
    m_update->setVisible(newMaps);
}

void MapNotices::hideUpdate()
{
    m_update->hide();
}

void MapNotices::setKept(bool kept)
{
    m_notKept->setVisible(!kept);
}

QWidget *MapNotices::keepLine() const
{
    return m_notKept;
}
