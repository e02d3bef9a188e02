#include "ui/MappingInUse.h"

#include "engine/Settings.h"
#include "mapping/MappingSession.h"

MappingInUse::MappingInUse(const MappingSession &session, Settings &settings, QObject *parent)
    : QObject(parent)
    , m_session(session)
    , m_settings(settings)
    , m_noted(settings.value(QLatin1String(noteKey)).toString())
{
    connect(&session, &MappingSession::replaced, this, &MappingInUse::look);
    connect(&session, &MappingSession::assigned, this, &MappingInUse::look);
    connect(&session, &MappingSession::keptChanged, this, &MappingInUse::look);
    connect(&session, &MappingSession::listChanged, this, &MappingInUse::look);
    connect(&session, &MappingSession::stepped, this, &MappingInUse::look);
}

void MappingInUse::look()
{
    m_name = m_session.name();
    m_listed = nullptr;
    bool same = false;
    for (const auto *list : {&m_session.custom(), &m_session.library()}) {
        for (const ZRButtonMap *map : *list) {
            if (m_name.isEmpty() || same || map->name != m_name) {
                continue;
            }
            same = m_session.isInUse(*map);
            if (same || m_listed == nullptr) {
                m_listed = map;
            }
        }
    }
    m_changed = m_listed != nullptr ? !same : !m_session.isKept();
    if (m_session.isGeneral() && m_session.isKept() && m_noted != m_name) {
        m_noted = m_name;
        m_settings.setValue(QLatin1String(noteKey), m_name);
    }
    Q_EMIT changed();
}
