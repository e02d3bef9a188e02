#pragma once

#include <QLatin1String>
#include <QString>

#include <utility>

/// The files that hold mappings: their names, and where they are.
class MappingFiles
{
public:
    // Each with the stroke that separates it from the folder.
    static constexpr QLatin1String libraryName{"/ZR.xml"};
    static constexpr QLatin1String customName{"/custom.xml"};
    static constexpr QLatin1String workingCopyName{"/current.xml"};

    /// @p directory is the program's data directory.
    explicit MappingFiles(QString directory)
        : m_directory(std::move(directory))
    {
    }

    const QString &directory() const { return m_directory; }

    /// The mappings that come with the program; replaced when the web service has newer ones.
    QString library() const { return m_directory + libraryName; }

    /// The user's own.
    QString custom() const { return m_directory + customName; }

    /// The one mapping that the program starts with, as soon as the user has changed anything.
    QString workingCopy() const { return m_directory + workingCopyName; }

private:
    QString m_directory;
};
