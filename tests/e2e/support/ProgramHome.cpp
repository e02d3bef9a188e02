#include "tests/e2e/support/ProgramHome.h"

#include "mapping/XmlMappingWriter.h"
#include "mapping/ZRButtonMap.h"

#include <QDir>
#include <QSettings>

namespace
{

const char dataFolder[] = "data/{Brimwell Labs}/{Veltrix}";
const char settingsFile[] = "config/{Brimwell Labs}/{Veltrix}.conf";

} // namespace

ProgramHome::ProgramHome()
{
    QDir directory(m_directory.path());
    directory.mkpath(QLatin1String(dataFolder));
    directory.mkpath(QStringLiteral("config/{Brimwell Labs}"));
    directory.mkdir(QStringLiteral("run"));
    QFile::setPermissions(directory.filePath(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void ProgramHome::addTo(QProcessEnvironment &environment) const
{
    environment.insert(QStringLiteral("HOME"), m_directory.path());
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_directory.filePath(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_directory.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), m_directory.filePath(QStringLiteral("cache")));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_directory.filePath(QStringLiteral("run")));
    environment.remove(QStringLiteral("VELTRIX_PORT"));
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
}

void ProgramHome::writeCurrentMap(const ZRButtonMap &map) const
{
    XmlMappingWriter(m_directory.filePath(QLatin1String(dataFolder)))
        .saveMap(&map, QStringLiteral("/current.xml"), true);
}

void ProgramHome::writeLibrary(const QList<const ZRButtonMap *> &maps) const
{
    XmlMappingWriter(m_directory.filePath(QLatin1String(dataFolder)))
        .saveMaps(maps, QStringLiteral("/ZR.xml"), true);
}

void ProgramHome::writeSensitivity(int normal, int shift1) const
{
    QSettings settings(m_directory.filePath(QLatin1String(settingsFile)), QSettings::IniFormat);
    settings.setValue(QStringLiteral("Slider.Normal"), normal);
    settings.setValue(QStringLiteral("Slider.Shift1"), shift1);
}
