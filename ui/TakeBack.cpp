#include "ui/TakeBack.h"

#include "mapping/XmlMappingReader.h"

#include <QShortcut>

#include <algorithm>

TakeBack::TakeBack(MappingSession &session, MapNotices &notices, QWidget *page)
    : QObject(page)
    , m_session(session)
    , m_notices(notices)
{
    const auto add = [page](int key, auto what) {
        connect(new QShortcut(QKeySequence(key), page), &QShortcut::activated, page, what);
    };
    const int control = Qt::CTRL;
    add(control + Qt::Key_Z, [this] { takeBack(); });
    add(control + Qt::SHIFT + Qt::Key_Z, [this] { redo(); });
    connect(&notices, &MapNotices::undo, this, &TakeBack::takeBack);
    connect(&session, &MappingSession::stepped, this, &TakeBack::say);
    // Another mapping has other steps: what was offered is not the last any more. Nor is what is forgotten.
    connect(&session, &MappingSession::replaced, &notices, &MapNotices::forgetStep);
    connect(&session, &MappingSession::stepForgotten, &notices, &MapNotices::forgetStep);
}

void TakeBack::takeBack()
{
    if (m_session.canTakeBack()) {
        showFailure(m_session.takeBack());
    }
}

void TakeBack::redo()
{
    if (m_session.canRedo()) {
        showFailure(m_session.redo());
    }
}

void TakeBack::showFailure(const FileResult &result)
{
    m_notices.setFailure(MapNotices::Task::TakeBack,
                         result ? QString() : tr("Nothing changed: %1").arg(result.inWords()));
}

void TakeBack::say(const MappingStep &step, MappingSession::Way way)
{
    m_notices.setFailure(MapNotices::Task::TakeBack, QString());
    m_notices.forgetStep();
    if (way == MappingSession::Way::Done) {
        sayDone(step);
    } else {
        m_notices.sayStep(words(step, way), false);
    }
}

// A choice in a menu is to be seen where it was made.
void TakeBack::sayDone(const MappingStep &step)
{
    const QString name = step.name.isEmpty() ? XmlMappingReader::nameForNone() : step.name;
    switch (step.kind) {
    case MappingStep::Kind::Assign:
        break;
    case MappingStep::Kind::Use:
        m_notices.sayStep({tr("'%1' is in use."), name}, true, {tr("'%1' is in use. Start with it:"), name});
        break;
    case MappingStep::Kind::Save:
        m_notices.sayStep({tr("Saved as '%1'."), name}, false, {tr("Saved as '%1'. Start with it:"), name});
        break;
    case MappingStep::Kind::Remove:
        m_notices.sayStep(
            {isListed(name) ? tr("The first '%1' was deleted.") : tr("'%1' was deleted."), name}, true);
        break;
    case MappingStep::Kind::Import:
        m_notices.sayStep({step.mappings > 1 ? tr("Imported: %1") : tr("'%1' was imported."), name}, true);
        break;
    case MappingStep::Kind::Restore:
        m_notices.sayStep({tr("An earlier %1 is back."), name}, true);
        break;
    }
}

MapNotices::Words TakeBack::words(const MappingStep &step, MappingSession::Way way) const
{
    const QString name = step.name.isEmpty() ? XmlMappingReader::nameForNone() : step.name;
    const bool back = way == MappingSession::Way::TakenBack;
    switch (step.kind) {
    case MappingStep::Kind::Assign:
        return {back ? tr("Button %1 is as it was.") : tr("Button %1 was changed again."),
                QString::number(step.control)};
    case MappingStep::Kind::Use:
        return {back ? tr("'%1' was not chosen.") : tr("'%1' is in use again."), name};
    case MappingStep::Kind::Save:
        return {back ? tr("'%1' is no longer saved.") : tr("'%1' is saved again."), name};
    case MappingStep::Kind::Remove:
        return {back ? tr("'%1' is back.") : tr("'%1' was deleted again."), name};
    case MappingStep::Kind::Import:
        if (step.mappings > 1) {
            return {back ? tr("Not imported any more: %1") : tr("Imported again: %1"), name};
        }
        return {back ? tr("'%1' is not imported any more.") : tr("'%1' was imported again."), name};
    case MappingStep::Kind::Restore:
        break;
    }
    return {back ? tr("%1 is as it was.") : tr("An earlier %1 is back."), name};
}

bool TakeBack::isListed(const QString &name) const
{
    const auto &maps = m_session.custom();
    return std::any_of(maps.begin(), maps.end(), [&](const ZRButtonMap *map) { return map->name == name; });
}
