#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// Where the user's settings are kept, before anything reads them.
///
/// What stands at the file's path and is no regular file is left alone: reading a pipe would wait for ever,
/// and writing would take the thing's place. The settings are then kept in a folder that goes with this
/// object.
///
/// A file that the toolkit cannot read without harm is set aside under another name (BrokenFile::copyName),
/// and the settings begin anew; one of which it would drop a part is read, and a copy is left beside it. The
/// log says so.
class SettingsPlace
{
    Q_DISABLE_COPY_MOVE(SettingsPlace)

public:
    /// A larger file holds something else. All that the program ever sets takes a few thousand bytes.
    static constexpr qint64 maximumSize = 1024LL * 1024;

    SettingsPlace(const QString &organisation, const QString &application);

    /// The file; where the system keeps settings in none, a path at which there is nothing.
    const QString &file() const { return m_file; }

    /// Whether @p content, read as settings, has the toolkit make objects of what it says they hold: a few
    /// bytes can stand for gigabytes, or for more recursion than the stack has room for. The program stores
    /// numbers and texts only.
    static bool holdsObjects(const QByteArray &content);

private:
    void keepNothing(const QString &reason);
    void check();
    void setAside(const QString &reason);

    QString m_file;
    std::unique_ptr<QTemporaryDir> m_instead;
};
