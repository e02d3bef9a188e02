#pragma once

#include <QObject>
#include <QString>

class MappingSession;
class Settings;
class ZRButtonMap;

/// Which of the listed mappings the one in use is, by its name, and whether it is still the same.
///
/// The working copy has no name in its file: what was in use when it was kept is noted in the user's
/// settings, for the session to load it by.
class MappingInUse : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MappingInUse)

public:
    static constexpr char noteKey[] = "Extra.Mapping"; ///< in the settings: empty or not there for none

    /// To be made before the session is loaded. Both must outlive this object.
    MappingInUse(const MappingSession &session, Settings &settings, QObject *parent);

    /// What the working copy is called.
    const QString &noted() const { return m_noted; }

    const QString &name() const { return m_name; } ///< empty when it has none
    bool isChanged() const { return m_changed; }   ///< since it was chosen or saved; a nameless one, kept

    /// Of the session's lists; null when none has the name. Of several that of the same content.
    const ZRButtonMap *listed() const { return m_listed; }

Q_SIGNALS:
    /// Something above may have changed. By then whoever followed the session before has heard of it.
    void changed();

private:
    void look();

    const MappingSession &m_session;
    Settings &m_settings;
    QString m_noted; // in the settings
    QString m_name;
    bool m_changed = false;
    const ZRButtonMap *m_listed = nullptr;
};
