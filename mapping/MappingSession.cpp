#include "mapping/MappingSession.h"

#include "mapping/EntryElement.h"
#include "mapping/FileHistory.h"
#include "mapping/LibraryKeeper.h"
#include "mapping/ListInWords.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingLog.h"
#include "mapping/SpecialAction.h"
#include "mapping/VersionRestore.h"

#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>
#include <memory>
#include <tuple>
#include <utility>

namespace
{

// What the reader makes of what the writer writes of @p action.
shortCut asReadBack(const shortCut &action)
{
    QDomDocument document;
    ZRButtonMap map{QString()};
    const Layer layer = Layer::Normal;
    const QDomElement element = EntryElement::write(&document, Layers::fileName(layer), action);
    map.setAction(0, Layers::number(layer), EntryElement::read(element, 0, 0));
    return map.actions[0][layer];
}

bool sameInAFile(const shortCut &one, const shortCut &other)
{
    return one == other || asReadBack(one) == asReadBack(other);
}

bool sameForTheKnob(const shortCut &one, const shortCut &other)
{
    const auto fields = [](const shortCut &s) { return std::tie(s.knobcc, s.m01h, s.m3fh, s.m0_127); };
    return actionKind(one) != ActionKind::MidiKnob || fields(one) == fields(other);
}

ActionTable asReadBack(const ActionTable &actions)
{
    ActionTable read;
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        for (const Layer layer : Layers::all) {
            read[control][layer] = asReadBack(actions[control][layer]);
        }
    }
    return read;
}

MappingChange::Content contentOf(const QString &path)
{
    const MappingFile::ReadResult file = MappingFile::read(path);
    return file.status == MappingFile::Status::Read ? MappingChange::Content(file.bytes) : std::nullopt;
}

// Nothing is there afterwards when there is no @p content.
FileResult put(const QString &path, const MappingChange::Content &content)
{
    FileHistory::note(path);
    if (content) {
        return MappingFile::replace(path, *content);
    }
    QFile file(path);
    return file.remove() ? FileResult::done() : FileResult::failed(file.errorString());
}

template <typename Same>
bool all(const ActionTable &ones, const ActionTable &others, Same same)
{
    return std::equal(ones.begin(), ones.end(), others.begin(), [same](const auto &one, const auto &other) {
        return std::equal(one.begin(), one.end(), other.begin(), same);
    });
}

} // namespace

MappingSession::MappingSession(const QString &dataDirectory, QObject *parent)
    : MappingSession(MappingFiles(dataDirectory), parent)
{
}

MappingSession::MappingSession(MappingFiles files, QObject *parent)
    : QObject(parent)
    , m_files(std::move(files))
    , m_writer(m_files.directory())
{
    connect(&m_reader, &XmlMappingReader::newMapListReady, this, &MappingSession::takeList);
    connect(&m_reader, &XmlMappingReader::onCurrentMapLoaded, this, &MappingSession::takeWorkingCopy);
}

void MappingSession::load(const std::function<void()> &selectDefault,
                          const std::function<ActionTable()> &otherwise, const QString &workingCopyName)
{
    m_now.name = workingCopyName; // before anybody is told of a list, and looks
    LibraryKeeper::restore(m_files.library(), m_files.seedLibrary());
    reloadLibrary();
    m_reader.readMapList(m_files.custom(), true);

    if (QFileInfo::exists(m_files.workingCopy())) {
        m_reader.readCurrentMap(m_files.workingCopy()); // takeWorkingCopy() begins with it
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
    return all(m_now.actions, m_now.kept, sameInAFile);
}

bool MappingSession::isInUse(const ZRButtonMap &map) const
{
    return all(m_now.actions, map.actions, sameInAFile);
}

bool MappingSession::endsKnobFields() const
{
    return !all(m_now.actions, m_now.kept, sameForTheKnob);
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

void MappingSession::takeList(const QList<ZRButtonMap *> &maps, bool custom, int defaultMap)
{
    if (!custom && maps.isEmpty()) {
        // A page that somebody else sent in the library's place, most likely: it takes no mapping away.
        qCWarning(lcMapping) << "The library holds no mapping: the selector keeps those that it has";
        return;
    }
    for (ZRButtonMap *map : maps) {
        map->setParent(this);
    }
    const List before = std::exchange(custom ? m_custom : m_library, List{maps, defaultMap});
    Q_EMIT listChanged(maps, custom, defaultMap);
    for (ZRButtonMap *map : before.maps) {
        if (map->parent() == this) {
            map->deleteLater(); // somebody may have it in hand
        }
    }
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
    doneInEdit(std::move(change));
}

// An edit that ends where it began has left nothing to take back; one that was kept in between has.
void MappingSession::doneInEdit(MappingChange change)
{
    const MappingChange *last = m_steps.last();
    if (change.edit != 0 && last != nullptr && last->edit == change.edit &&
        last->step.control == change.step.control && last->file != MappingChange::File::WorkingCopy) {
        change.before = last->before;
        m_steps.dropLast();
        if (change.before.actions == m_now.actions) {
            Q_EMIT stepForgotten();
            return;
        }
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
    change.contentBefore = contentOf(pathOf(file));
    FileResult result = write();
    if (result && file == MappingChange::File::WorkingCopy) {
        Q_EMIT generalNeeded(); // from here on all is about that one
    }
    change.before = m_now;
    if (result) {
        take();
    }
    if (file == MappingChange::File::Custom) {
        m_reader.readMapList(m_files.custom(), true);
    }
    change.contentAfter = contentOf(pathOf(file));
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
    FileResult result = go(change, Way::TakenBack);
    if (result) {
        m_steps.takeBack();
        Q_EMIT stepped(change.step, Way::TakenBack);
    } else if (isOthers(change, change.contentAfter)) {
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
    FileResult result = go(change, Way::DoneAgain);
    if (result) {
        m_steps.redo();
        Q_EMIT stepped(change.step, Way::DoneAgain);
    } else if (isOthers(change, change.contentBefore)) {
        m_steps.dropNext();
        Q_EMIT stepForgotten();
    }
    return result;
}

// Whether somebody else has written the user's mappings since, so that the step can never be gone.
bool MappingSession::isOthers(const MappingChange &change, const MappingChange::Content &expected) const
{
    return change.file == MappingChange::File::Custom && contentOf(m_files.custom()) != expected;
}

FileResult MappingSession::go(const MappingChange &change, Way way)
{
    State to = way == Way::TakenBack ? change.before : change.after;
    to.kept = m_now.kept;
    if (change.file == MappingChange::File::WorkingCopy || change.file == MappingChange::File::Custom) {
        FileResult result = putFile(change, &to, way);
        if (!result) {
            return result;
        }
    }
    const State from = std::exchange(m_now, to);
    if (change.file == MappingChange::File::Keepers) {
        FileResult result = m_keeper(); // it writes what is in use
        if (!result) {
            m_now = from;
            return result;
        }
        m_now.kept = m_now.actions;
    }
    if (change.file == MappingChange::File::Custom) {
        readCustom();
    }
    if (from.actions != m_now.actions || from.name != m_now.name) {
        Q_EMIT replaced();
    }
    followKept();
    return FileResult::done();
}

FileResult MappingSession::putFile(const MappingChange &change, State *to, Way way)
{
    const bool back = way == Way::TakenBack;
    if (contentOf(pathOf(change.file)) == (back ? change.contentAfter : change.contentBefore)) {
        FileResult result = put(pathOf(change.file), back ? change.contentBefore : change.contentAfter);
        if (result && change.file == MappingChange::File::WorkingCopy) {
            to->kept = back ? change.before.kept : change.after.kept;
        }
        return result;
    }
    if (change.file == MappingChange::File::Custom) {
        return FileResult::failed(QStringLiteral("it has been changed since"));
    }
    // What is in use was kept since: what is in use then is kept as well.
    FileResult result =
        write(to->actions, QLatin1String(workingCopyMapping), MappingFiles::workingCopyName, true);
    if (result) {
        to->kept = asReadBack(to->actions);
    }
    return result;
}

QString MappingSession::pathOf(MappingChange::File file) const
{
    return file == MappingChange::File::Custom ? m_files.custom() : m_files.workingCopy();
}

void MappingSession::readCustom()
{
    if (QFileInfo::exists(m_files.custom())) {
        m_reader.readMapList(m_files.custom(), true);
    } else {
        takeList({}, true, 0);
    }
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

FileResult MappingSession::keep()
{
    FileResult result = isGeneral() ? write(m_now.actions, QLatin1String(workingCopyMapping),
                                            MappingFiles::workingCopyName, true)
                                    : m_keeper();
    if (result) {
        m_now.kept = isGeneral() ? asReadBack(m_now.actions) : m_now.actions;
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
        last->contentBefore = contentOf(m_files.workingCopy());
        last->before.kept = m_now.kept;
    }
    FileResult result = keep();
    if (result) {
        last->file = MappingChange::File::WorkingCopy;
        last->contentAfter = contentOf(m_files.workingCopy());
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
                m_reader.readCurrentMap(m_files.workingCopy());
            }
        });
}

FileResult MappingSession::reloadLibrary()
{
    FileResult result = m_reader.readMapList(m_files.library(), false);
    if (result) {
        LibraryKeeper::keep(m_files.library(), m_reader.buttonMapList().size());
    }
    return result;
}
