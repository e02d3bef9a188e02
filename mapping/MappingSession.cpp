#include "mapping/MappingSession.h"

#include "mapping/EntryElement.h"
#include "mapping/LibraryKeeper.h"
#include "mapping/MappingLog.h"
#include "mapping/SpecialAction.h"

#include <QDomDocument>
#include <QFileInfo>

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
                          const std::function<ActionTable()> &otherwise)
{
    LibraryKeeper::restore(m_files.library(), m_files.seedLibrary());
    reloadLibrary();
    m_reader.readMapList(m_files.custom(), true);

    if (QFileInfo::exists(m_files.workingCopy())) {
        m_reader.readCurrentMap(m_files.workingCopy()); // takeWorkingCopy() begins with it
    } else {
        selectDefault();
    }
    if (!m_begun) {
        adopt(otherwise());
    }
}

bool MappingSession::isKept() const
{
    return all(m_now.actions, m_kept, sameInAFile);
}

bool MappingSession::endsKnobFields() const
{
    return !all(m_now.actions, m_kept, sameForTheKnob);
}

void MappingSession::adopt(const ActionTable &actions)
{
    m_begun = true;
    m_kept = actions;
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
    begin(owned->actions, QString());
}

void MappingSession::begin(const ZRButtonMap &map)
{
    begin(map.actions, map.name);
}

void MappingSession::begin(const ActionTable &actions, const QString &name)
{
    m_begun = true;
    m_before.clear();
    m_undone.clear();
    m_kept = actions;
    m_now = {actions, name};
    Q_EMIT replaced();
    followKept();
}

void MappingSession::assign(int control, Layer layer, const shortCut &action)
{
    assign(control, {{layer, action}});
}

void MappingSession::assign(int control, const QMap<Layer, shortCut> &layers)
{
    if (!ActionTable::has(control)) {
        return;
    }
    State after = m_now;
    for (auto it = layers.begin(); it != layers.end(); ++it) {
        after.actions[control][it.key()] = it.value();
    }
    if (after.actions == m_now.actions) {
        return;
    }
    addStep();
    m_now = std::move(after);
    for (auto it = layers.begin(); it != layers.end(); ++it) {
        Q_EMIT assigned(control, it.key());
    }
    followKept();
}

void MappingSession::use(const ZRButtonMap &map)
{
    if (!m_begun) {
        begin(map);
        return;
    }
    State after{map.actions, map.name};
    if (after.actions != m_now.actions || after.name != m_now.name) {
        addStep();
    }
    m_now = std::move(after);
    Q_EMIT replaced();
    followKept();
}

void MappingSession::addStep()
{
    m_undone.clear();
    m_before.push_back(m_now);
    if (m_before.size() > mostSteps) {
        m_before.pop_front();
    }
}

bool MappingSession::takeBack()
{
    const bool can = canTakeBack();
    restore(m_before, m_undone);
    return can;
}

bool MappingSession::redo()
{
    const bool can = canRedo();
    restore(m_undone, m_before);
    return can;
}

void MappingSession::restore(std::deque<State> &from, std::deque<State> &to)
{
    if (from.empty()) {
        return;
    }
    to.push_back(std::exchange(m_now, from.back()));
    from.pop_back();
    Q_EMIT replaced();
    followKept();
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

FileResult MappingSession::write(const QString &name, const QString &fileName, bool alone)
{
    ZRButtonMap map(name);
    map.actions = m_now.actions; // whole entries: the knob's fields too
    return m_writer.saveMap(&map, fileName, alone);
}

FileResult MappingSession::keep()
{
    const FileResult result = write(QLatin1String(workingCopyMapping), MappingFiles::workingCopyName, true);
    if (result) {
        for (int control = 0; control < ActionTable::controlCount; ++control) {
            for (const Layer layer : Layers::all) {
                m_kept[control][layer] = asReadBack(m_now.actions[control][layer]);
            }
        }
    }
    followKept();
    return result;
}

FileResult MappingSession::saveAs(const QString &name)
{
    const FileResult result = write(name, MappingFiles::customName, false);
    if (result) {
        m_now.name = name;
    }
    m_reader.readMapList(m_files.custom(), true);
    return result;
}

FileResult MappingSession::remove(const QString &name)
{
    const FileResult result = m_writer.removeMap(name);
    m_reader.readMapList(m_files.custom(), true);
    return result;
}

FileResult MappingSession::reloadLibrary()
{
    FileResult result = m_reader.readMapList(m_files.library(), false);
    if (result) {
        LibraryKeeper::keep(m_files.library(), m_reader.buttonMapList().size());
    }
    return result;
}
