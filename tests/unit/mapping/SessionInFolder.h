#pragma once

#include "mapping/MappingSession.h"

#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A session of the mappings in a folder of its own, started as the program starts it.
class SessionInFolder
{
protected:
    void begin()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        restart();
    }
    void end()
    {
        m_session.reset();
        m_directory.reset();
    }
    void restart() { m_session = std::make_unique<MappingSession>(m_directory->path()); }
    QString path(const char *name) const { return m_directory->filePath(QString::fromLatin1(name)); }
    void load(const ActionTable &stored = {})
    {
        m_session->load(
            [this] {
                if (const ZRButtonMap *map = m_session->defaultMapping()) {
                    m_session->use(*map);
                }
            },
            [stored] { return stored; });
    }
    qint32 inUse(int control = 3) const { return m_session->action(control, Layer::Normal).key1; }
    static QStringList names(const QList<ZRButtonMap *> &maps)
    {
        QStringList found;
        for (const ZRButtonMap *map : maps) {
            found << map->name;
        }
        return found;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<MappingSession> m_session;
};
