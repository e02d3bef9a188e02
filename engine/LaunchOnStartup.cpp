#include "engine/LaunchOnStartup.h"

#include "engine/platform/AutostartEntry.h"

LaunchOnStartup::LaunchOnStartup(AutostartEntry &entry, const QString &program)
    : m_entry(entry)
    , m_program(program)
{
}

bool LaunchOnStartup::isLaunchOnStartup() const
{
    return m_entry.exists();
}

void LaunchOnStartup::setLaunchOnStartup(bool on)
{
    if (on) {
        m_entry.write(m_program);
    } else {
        m_entry.remove();
    }
}
