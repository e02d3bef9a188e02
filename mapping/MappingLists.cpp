#include "mapping/MappingLists.h"

#include "mapping/LibraryKeeper.h"
#include "mapping/MappingLog.h"

#include <QFileInfo>

MappingLists::MappingLists(const MappingFiles &files, QObject *parent)
    : QObject(parent)
    , m_files(files)
{
    connect(&m_reader, &XmlMappingReader::newMapListReady, this, &MappingLists::take);
}

void MappingLists::load()
{
    LibraryKeeper::restore(m_files.library(), m_files.seedLibrary());
    readLibrary();
    readCustom();
}

FileResult MappingLists::readLibrary()
{
    FileResult result = m_reader.readMapList(m_files.library(), false);
    if (result) {
        LibraryKeeper::keep(m_files.library(), m_reader.buttonMapList().size());
    }
    return result;
}

FileResult MappingLists::readCustom()
{
    return m_reader.readMapList(m_files.custom(), true);
}

void MappingLists::followCustom()
{
    if (QFileInfo::exists(m_files.custom())) {
        readCustom();
    } else {
        take({}, true, 0);
    }
}

void MappingLists::take(const QList<ZRButtonMap *> &maps, bool custom, int defaultMap)
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
    Q_EMIT changed(maps, custom, defaultMap);
    for (ZRButtonMap *map : before.maps) {
        if (map->parent() == this) {
            map->deleteLater(); // somebody may have it in hand
        }
    }
}
