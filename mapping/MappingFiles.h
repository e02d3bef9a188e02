#pragma once

#include <QLatin1String>
#include <QString>

#include <utility>

/// The files that hold mappings: their names, and where they are.
class MappingFiles
{
public:
    // Each with the stroke that separates it from the folder.
    static inline const QLatin1String libraryName{"/ZR.xml"};
    static inline const QLatin1String customName{"/custom.xml"};
    static inline const QLatin1String workingCopyName{"/current.xml"};
    static inline const QLatin1String programsName{"/programs.xml"};

    /// @p directory is the program's data directory. @p seedDirectory holds the files that came with the
    /// program; empty means that none did.
    explicit MappingFiles(QString directory, QString seedDirectory = QString())
        : m_directory(std::move(directory))
        , m_seedDirectory(std::move(seedDirectory))
    {
    }

    const QString &directory() const { return m_directory; }

    /// The mappings that come with the program; replaced when the web service has newer ones.
    QString library() const { return m_directory + libraryName; }

    /// The library as it came with the program; empty when none did.
    QString seedLibrary() const
    {
        return m_seedDirectory.isEmpty() ? QString() : m_seedDirectory + libraryName;
    }

    /// The user's own.
    QString custom() const { return m_directory + customName; }

    /// The one mapping that the program starts with, as soon as the user has changed anything.
    QString workingCopy() const { return m_directory + workingCopyName; }

    /// The mappings that act for one program each.
    QString programs() const { return m_directory + programsName; }

private:
    QString m_directory;
    QString m_seedDirectory;
};
