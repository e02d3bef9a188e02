#pragma once

#include <QString>
#include <QtGlobal>

class AutostartEntry;

/// Whether this program starts when the user logs on.
class LaunchOnStartup
{
    Q_DISABLE_COPY_MOVE(LaunchOnStartup)

public:
    /// @p program is the executable's path, "/" as separator. @p entry must outlive this object.
    LaunchOnStartup(AutostartEntry &entry, const QString &program);

    bool isLaunchOnStartup() const;

    /// Both directions may be asked for again. A failure is not reported: isLaunchOnStartup() tells what is
    /// so.
    void setLaunchOnStartup(bool on);

private:
    AutostartEntry &m_entry;
    QString m_program;
};
