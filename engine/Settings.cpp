#include "engine/Settings.h"

#include "engine/EngineLog.h"

#include <QEvent>

namespace
{

const QString versionKey = QStringLiteral("ZR.ver");

} // namespace

Settings::Settings(const QString &organisation, const QString &application)
    : QSettings(organisation, application)
{
}

Settings::Settings(const QString &file)
    : QSettings(file, QSettings::IniFormat)
{
}

Settings::~Settings() = default;

bool Settings::write()
{
    sync();
    lookAtStatus();
    return m_written;
}

// The base class writes with an event to itself.
bool Settings::event(QEvent *event)
{
    const bool done = QSettings::event(event);
    if (event->type() == QEvent::UpdateRequest) {
        lookAtStatus();
    }
    return done;
}

void Settings::lookAtStatus()
{
    bool written = status() == QSettings::NoError;
    if (!written) {
        // A status once bad stays so. Another look at the same store has one of its own, and tries again.
        QSettings again(fileName(), format());
        again.sync();
        written = again.status() == QSettings::NoError;
    }
    if (written == m_written) {
        return;
    }
    m_written = written;
    if (!written) {
        qCWarning(lcEngine).noquote() << "The settings cannot be written:" << fileName();
    }
    Q_EMIT writtenChanged(written);
}

bool Settings::isOlder(const QSettings &store, const QString &version)
{
    return store.value(versionKey).toString() < version;
}

void Settings::setUsedBy(const QString &version)
{
    setValue(versionKey, version);
}
