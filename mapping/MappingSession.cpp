#include "mapping/MappingSession.h"

#include "mapping/ListInWords.h"
#include "mapping/ReadBack.h"
#include "mapping/VersionRestore.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include <memory>
#include <utility>

MappingSession::MappingSession(const QString &dataDirectory, QObject *parent)
    : MappingSession(MappingFiles(dataDirectory), parent)
{
}

MappingSession::MappingSession(MappingFiles files, QObject *parent)
    : QObject(parent)
    , m_files(std::move(files))
    , m_writer(m_files.directory())
    , m_lists(m_files)
    , m_stepFiles(m_files)
{
    connect(&m_lists, &MappingLists::changed, this, &MappingSession::listChanged);
}

void MappingSession::load(const std::function<void()> &selectDefault,
                          const std::function<ActionTable()> &otherwise, const QString &workingCopyName)
{
    m_now.name = workingCopyName; // before anybody is told of a list, and looks
    m_lists.load();
    if (QFileInfo::exists(m_files.workingCopy())) {
        readWorkingCopy(); // begins with it
    } else {
        selectDefault();
    }
    if (!m_begun) {
        m_now.name.clear();
        adopt(otherwise());
    }
}

bool MappingSession::isKept() const
{
    return ReadBack::isSame(m_now.actions, m_now.kept);
}

bool MappingSession::isInUse(const ZRButtonMap &map) const
{
    return ReadBack::isSame(m_now.actions, map.actions);
}

bool MappingSession::endsKnobFields() const
{
    return !ReadBack::isSameForTheKnob(m_now.actions, m_now.kept);
}

void MappingSession::adopt(const ActionTable &actions)
{
    m_begun = true;
    m_now.kept = actions;
    const ActionTable before = std::exchange(m_now.actions, actions);
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        for (const Layer layer : Layers::all) {
            if (before[control][layer] != actions[control][layer]) {
                Q_EMIT assigned(control, layer);
            }
        }
    }
}

void MappingSession::readWorkingCopy()
{
    XmlMappingReader reader;
    connect(&reader, &XmlMappingReader::onCurrentMapLoaded, this, &MappingSession::takeWorkingCopy);
    reader.readCurrentMap(m_files.workingCopy());
}

void MappingSession::takeWorkingCopy(ZRButtonMap *map)
{
    const std::unique_ptr<ZRButtonMap> owned(map);
    if (!m_begun) {
        begin(owned->actions, m_now.name);
        return;
    }
    m_now = {owned->actions, QString(), owned->actions};
    Q_EMIT replaced();
    followKept();
}

void MappingSession::begin(const ZRButtonMap &map)
{
    begin(map.actions, map.name);
}

void MappingSession::begin(const ActionTable &actions, const QString &name)
{
    m_begun = true;
    m_steps.clear();
    m_now = {actions, name, actions};
    Q_EMIT replaced();
    followKept();
}

void MappingSession::assign(int control, Layer layer, const shortCut &action)
{
    assign(control, {{layer, action}});
}

void MappingSession::assign(int control, const QMap<Layer, shortCut> &layers, int edit)
{
    if (!ActionTable::has(control)) {
        return;
    }
    MappingChange change;
    change.step = {MappingStep::Kind::Assign, control, QString()};
    change.edit = edit;
    change.before = m_now;
    for (auto it = layers.begin(); it != layers.end(); ++it) {
        m_now.actions[control][it.key()] = it.value();
    }
    if (m_now.actions == change.before.actions) {
        return;
    }
    {
        const QScopedValueRollback<int> inEdit(m_edit, edit);
        for (auto it = layers.begin(); it != layers.end(); ++it) {
            Q_EMIT assigned(control, it.key());
        }
    }
    followKept();
    if (m_steps.joinEdit(&change) && change.before.actions == m_now.actions) {
        Q_EMIT stepForgotten(); // an edit that ends where it began has left nothing to take back
        return;
    }
    done(std::move(change));
}

void MappingSession::use(const ZRButtonMap &map)
{
    if (!m_begun) {
        begin(map);
        return;
    }
    MappingChange change;
    change.step = {MappingStep::Kind::Use, -1, map.name};
    change.before = std::exchange(m_now, {map.actions, map.name, m_now.kept});
    Q_EMIT replaced();
    followKept();
    if (change.before.actions != m_now.actions || change.before.name != m_now.name) {
        done(std::move(change));
    }
}

void MappingSession::done(MappingChange change)
{
    change.after = m_now;
    const MappingStep step = change.step;
    m_steps.add(std::move(change));
    Q_EMIT stepped(step, Way::Done);
}

FileResult MappingSession::change(const MappingStep &step, MappingChange::File file,
                                  const std::function<FileResult()> &write, const std::function<void()> &take)
{
    MappingChange change;
    change.step = step;
    change.file = file;
    change.contentBefore = m_stepFiles.content(file);
    FileResult result = write();
    if (result && file == MappingChange::File::WorkingCopy) {
        Q_EMIT generalNeeded(); // from here on all is about that one
    }
    change.before = m_now;
    if (result) {
        take();
    }
    if (file == MappingChange::File::Custom) {
        m_lists.readCustom();
    }
    change.contentAfter = m_stepFiles.content(file);
    // Also where the file holds what it held: what was in use may not have been kept.
    if (result && (change.contentAfter != change.contentBefore || change.before.actions != m_now.actions ||
                   change.before.name != m_now.name)) {
        done(std::move(change));
    }
    return result;
}

FileResult MappingSession::takeBack()
{
    if (!canTakeBack()) {
        return FileResult::failed(QStringLiteral("there is nothing to take back"));
    }
    const MappingChange change = *m_steps.last();
    const MappingChange back = change.reversed();
    FileResult result = go(back);
    if (result) {
        m_steps.takeBack();
        Q_EMIT stepped(change.step, Way::TakenBack);
    } else if (m_stepFiles.isOthers(back)) {
        m_steps.dropLast();
        Q_EMIT stepForgotten();
    }
    return result;
}

FileResult MappingSession::redo()
{
    if (!canRedo()) {
        return FileResult::failed(QStringLiteral("there is nothing to do again"));
    }
    const MappingChange change = *m_steps.next();
    FileResult result = go(change);
    if (result) {
        m_steps.redo();
        Q_EMIT stepped(change.step, Way::DoneAgain);
    } else if (m_stepFiles.isOthers(change)) {
        m_steps.dropNext();
        Q_EMIT stepForgotten();
    }
    return result;
}

// From what was before @p change to what is after it.
FileResult MappingSession::go(const MappingChange &change)
{
    State to = change.after;
    to.kept = m_now.kept;
    FileResult result = m_stepFiles.put(change, &to, [this](State *now) { return keepWorkingCopy(now); });
    if (!result) {
        return result;
    }
    const State from = std::exchange(m_now, to);
    if (change.file == MappingChange::File::Keepers) {
        result = m_keeper(); // it writes what is in use
        if (!result) {
            m_now = from;
            return result;
        }
        m_now.kept = m_now.actions;
    }
    if (change.file == MappingChange::File::Custom) {
        m_lists.followCustom();
    }
    if (from.actions != m_now.actions || from.name != m_now.name) {
        Q_EMIT replaced();
    }
    followKept();
    return result;
}

void MappingSession::followKept()
{
    const bool kept = isKept();
    if (std::exchange(m_saidKept, kept) != kept) {
        Q_EMIT keptChanged(kept);
    }
    const bool ends = endsKnobFields();
    if (std::exchange(m_saidEndsKnobFields, ends) != ends) {
        Q_EMIT endsKnobFieldsChanged(ends);
    }
}

FileResult MappingSession::write(const ActionTable &actions, const QString &name, const QString &fileName,
                                 bool alone)
{
    ZRButtonMap map(name);
    map.actions = actions; // whole entries: the knob's fields too
    return m_writer.saveMap(&map, fileName, alone);
}

MappingSession::Aside MappingSession::exchange(Aside next)
{
    Aside last{std::exchange(m_now, std::move(next.now)), std::exchange(m_steps, std::move(next.steps)),
               std::exchange(m_keeper, std::move(next.keeper))};
    Q_EMIT replaced();
    followKept();
    return last;
}

void MappingSession::countAsKept(const ActionTable &kept)
{
    m_now.kept = kept;
    followKept();
}

FileResult MappingSession::keepWorkingCopy(State *now)
{
    FileResult result =
        write(now->actions, QLatin1String(workingCopyMapping), MappingFiles::workingCopyName, true);
    if (result) {
        now->kept = ReadBack::of(now->actions);
    }
    return result;
}

FileResult MappingSession::keep()
{
    FileResult result = isGeneral() ? keepWorkingCopy(&m_now) : m_keeper();
    if (result && !isGeneral()) {
        m_now.kept = m_now.actions;
    }
    followKept();
    return result;
}

FileResult MappingSession::keepWithLastStep()
{
    MappingChange *last = m_steps.last();
    if (last == nullptr || last->file == MappingChange::File::Custom) {
        return keep();
    }
    if (!isGeneral()) {
        // Whoever keeps it has most likely done so when it changed.
        FileResult result = m_now.kept == m_now.actions ? FileResult::done() : keep();
        if (result) {
            last->file = MappingChange::File::Keepers;
        }
        return result;
    }
    if (last->file == MappingChange::File::None) {
        last->contentBefore = m_stepFiles.content(MappingChange::File::WorkingCopy);
        last->before.kept = m_now.kept;
    }
    FileResult result = keep();
    if (result) {
        last->file = MappingChange::File::WorkingCopy;
        last->contentAfter = m_stepFiles.content(MappingChange::File::WorkingCopy);
        last->after = m_now;
    }
    return result;
}

FileResult MappingSession::saveAs(const QString &name)
{
    return change(
        {MappingStep::Kind::Save, -1, name}, MappingChange::File::Custom,
        [&] { return write(m_now.actions, name, MappingFiles::customName, false); },
        [&] { m_now.name = name; });
}

ImportedMappings::Outcome MappingSession::importFile(const QString &path)
{
    ImportedMappings file(path);
    FileResult result = FileResult::failed(file.fault());
    if (file.fault().isEmpty() && file.isForPrograms()) {
        result = m_settlePrograms();
        result = result ? file.addTo(m_files) : result;
        if (result) {
            Q_EMIT programsAdded();
        }
    } else if (file.fault().isEmpty()) {
        const QStringList names = file.chooseNames(m_files);
        result = change({MappingStep::Kind::Import, -1, ListInWords::names(names), names.size()},
                        MappingChange::File::Custom, [&] { return file.addTo(m_files); });
    }
    return file.outcome(result, m_programsAct);
}

FileResult MappingSession::remove(const QString &name)
{
    return change({MappingStep::Kind::Remove, -1, name}, MappingChange::File::Custom,
                  [&] { return m_writer.removeMap(name); });
}

FileResult MappingSession::restore(const QString &version)
{
    const VersionRestore::Content content = VersionRestore::read(version, m_files);
    if (!content.result) {
        return content.result;
    }
    if (content.file == m_files.programs()) {
        m_settlePrograms(); // what cannot be written is to go all the same
        FileResult result = VersionRestore::put(content);
        if (result) {
            Q_EMIT programsRestored();
        }
        return result;
    }
    const bool custom = content.file == m_files.custom();
    return change(
        {MappingStep::Kind::Restore, -1, QFileInfo(content.file).fileName()},
        custom ? MappingChange::File::Custom : MappingChange::File::WorkingCopy,
        [&] { return VersionRestore::put(content); },
        [&] {
            if (!custom) {
                readWorkingCopy();
            }
        });
}
