#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

/// Where the user's settings are kept, before anything reads them.
///
/// What stands at the file's path and is no regular file is left alone: reading a pipe would wait for ever,
/// and writing would take the thing's place. The settings are then kept in a folder that goes with this
/// object.
class SettingsPlace
{
    Q_DISABLE_COPY_MOVE(SettingsPlace)

public:
    SettingsPlace(const QString &organisation, const QString &application);

    /// The file; where the system keeps settings in none, a path at which there is nothing.
    const QString &file() const { return m_file; }

private:
    QString m_file;
    std::unique_ptr<QTemporaryDir> m_instead;
};
