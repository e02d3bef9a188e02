#include "mapping/MappingSession.h"

#include "mapping/LibraryKeeper.h"
#include "mapping/MappingLog.h"

#include <QFileInfo>

#include <memory>
#include <utility>

MappingSession::MappingSession(const QString &dataDirectory, QObject *parent)
    : QObject(parent)
    , m_files(dataDirectory)
    , m_writer(dataDirectory)
{
    connect(&m_reader, &XmlMappingReader::newMapListReady, this, &MappingSession::takeList);
    connect(&m_reader, &XmlMappingReader::onCurrentMapLoaded, this, &MappingSession::takeWorkingCopy);
}

void MappingSession::load(const std::function<ActionTable()> &otherwise)
{
    LibraryKeeper::restore(m_files.library());
    m_reader.readMapList(m_files.library(), false);
    m_reader.readMapList(m_files.custom(), true);

    if (QFileInfo::exists(m_files.workingCopy())) {
        if (m_reader.readCurrentMap(m_files.workingCopy())) {
            return; // takeWorkingCopy() has begun with it
        }
    } else if (const ZRButtonMap *map = defaultMapping()) {
        begin(*map);
        return;
    }
    adopt(otherwise());
}

void MappingSession::adopt(const ActionTable &actions)
{
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
    if (!custom) {
        LibraryKeeper::keep(m_files.library(), maps.size());
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
        m_kept = m_now.actions;
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
    return m_reader.readMapList(m_files.library(), false);
}
