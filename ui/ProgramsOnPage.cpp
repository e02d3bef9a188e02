#include "ui/ProgramsOnPage.h"

#include "engine/ProgramSwitch.h"
#include "mapping/ProgramMappings.h"
#include "ui/MapNotices.h"
#include "ui/MappingFileExchange.h"
#include "ui/OverlayDialog.h"
#include "ui/ProgramChoice.h"

#include <QChildEvent>

namespace
{

constexpr QPoint choicePlace(330, 240); // under the page's heading

} // namespace

ProgramsOnPage::ProgramsOnPage(ProgramSwitch &programs, ProgramMappings &mappings, MapNotices &notices,
                               QWidget *page)
    : QObject(page)
    , m_programs(programs)
    , m_mappings(mappings)
    , m_notices(notices)
{
    const auto show = [&notices](const FileResult &result) {
        notices.setFailure(MapNotices::Task::Programs,
                           result ? QString() : tr("Not kept: %1").arg(result.inWords()));
    };
    connect(&mappings, &ProgramMappings::kept, this, show);
    connect(&mappings, &ProgramMappings::changed, &notices, &MapNotices::forgetStep);
    if (programs.isOffered()) {
        m_choice = new ProgramChoice(programs, mappings, page);
        m_choice->move(choicePlace);
        connect(m_choice, &ProgramChoice::onlyFor, this,
                [&mappings, show](const FocusedProgram::Program &program) {
                    show(mappings.give(program.id, program.name));
                });
        connect(m_choice, &ProgramChoice::forAllInsteadOf, this,
                [&mappings, show](const QString &program) { show(mappings.take(program)); });
    }
    for (QObject *child : page->children()) {
        watchChild(child);
    }
    page->installEventFilter(this);
}

void ProgramsOnPage::load()
{
    const FileResult result = m_mappings.load();
    if (!result) {
        m_notices.setFailure(MapNotices::Task::Programs,
                             tr("The programs' mappings were not read: %1").arg(result.inWords()));
    }
}

bool ProgramsOnPage::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
        m_programs.setPageShown(event->type() == QEvent::Show);
        break;
    case QEvent::ChildPolished: // dialogs are made when they are asked for
        watchChild(static_cast<QChildEvent *>(event)->child());
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void ProgramsOnPage::watchChild(QObject *child)
{
    auto *bar = qobject_cast<ComboMenuBar *>(child);
    auto *dialog = qobject_cast<OverlayDialog *>(child);
    auto *files = qobject_cast<MappingFileExchange *>(child);
    if ((bar == nullptr && dialog == nullptr && files == nullptr) || m_watched.contains(child)) {
        return;
    }
    m_watched.insert(child);
    connect(child, &QObject::destroyed, this, [this](QObject *gone) {
        m_watched.remove(gone);
        setChoosing(gone, false);
    });
    if (bar != nullptr) {
        connect(bar, &ComboMenuBar::choosing, this,
                [this, bar](bool choosing) { setChoosing(bar, choosing); });
    } else if (files != nullptr) {
        connect(files, &MappingFileExchange::choosing, this,
                [this, files](bool choosing) { setChoosing(files, choosing); });
    } else {
        connect(dialog, &OverlayDialog::setBlur, this, [this, dialog] { setChoosing(dialog, true); });
        // What a dialog says it may say after it has been hidden.
        connect(
            dialog, &OverlayDialog::hidden, this, [this, dialog] { setChoosing(dialog, false); },
            Qt::QueuedConnection);
    }
}

void ProgramsOnPage::setChoosing(QObject *where, bool choosing)
{
    if (choosing) {
        m_choosing.insert(where);
    } else {
        m_choosing.remove(where);
    }
    tellChoosing();
}

void ProgramsOnPage::setAsking(int change)
{
    m_asking += change;
    tellChoosing();
}

void ProgramsOnPage::tellChoosing()
{
    const bool choosing = !m_choosing.isEmpty() || m_asking > 0;
    if (!choosing) {
        m_mappings.finishEdit();
    }
    m_programs.setChoosing(choosing);
}

ProgramsOnPage::Asking::Asking(ProgramsOnPage *programs)
    : m_programs(programs)
{
    if (m_programs != nullptr) {
        m_programs->setAsking(1);
    }
}

ProgramsOnPage::Asking::~Asking()
{
    if (m_programs != nullptr) {
        QMetaObject::invokeMethod(
            m_programs, [programs = m_programs] { programs->setAsking(-1); }, Qt::QueuedConnection);
    }
}
