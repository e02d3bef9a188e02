#pragma once

#include "MappingFixtures.h"
#include "mapping/MappingFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

inline void setMode(const QString &path, mode_t mode)
{
    if (chmod(QFile::encodeName(path).constData(), mode) != 0) {
        qFatal("%s keeps its mode", qPrintable(path));
    }
}

inline void makeLink(const QString &target, const QString &link)
{
    if (symlink(QFile::encodeName(target).constData(), QFile::encodeName(link).constData()) != 0) {
        qFatal("%s cannot be linked", qPrintable(link));
    }
}

/// Files in a folder of their own that everybody may write, and what replacing one has said.
class FileInFolder
{
protected:
    void begin()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        setMode(m_directory->path(), 0777);
        m_reason.clear();
    }
    QString path(const char *name = "file.xml") const { return m_directory->filePath(QLatin1String(name)); }
    QStringList names() const
    {
        return QDir(m_directory->path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }
    bool replace(const QString &path, const QByteArray &bytes)
    {
        const FileResult result = MappingFile::replace(path, bytes);
        m_reason = result.reason();
        return bool(result);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_reason;
};
