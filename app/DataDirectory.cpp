#include "app/DataDirectory.h"

#include "app/AppLog.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingFiles.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QStringList>

QString DataDirectory::path()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

void DataDirectory::prepare(const QString &directory, const QString &seedDirectory)
{
    if (directory.isEmpty()) {
        qFatal("Cannot determine settings storage location");
    }
    const QDir data(directory);
    if (data.mkpath(data.absolutePath())) {
        QDir::setCurrent(data.absolutePath());
    } else {
        qCWarning(lcApp).noquote() << "cannot create the folder" << directory + QLatin1Char(':')
                                   << "mappings will not be kept";
    }
    closeToOthers(directory);
    for (const QLatin1String name : {MappingFiles::customName, MappingFiles::libraryName}) {
        if (QFile::copy(seedDirectory + name, directory + name)) {
            MappingFile::makeWritable(directory + name); // a package's files are often for reading only
        }
    }
    qCInfo(lcApp).noquote() << "storage:" << directory;
}

void DataDirectory::closeToOthers(const QString &directory)
{
    const QFile::Permissions permissions = QFile::permissions(directory);
    const QFile::Permissions owners = permissions & (QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    constexpr QFile::Permissions others(QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                        QFile::ReadOther | QFile::WriteOther | QFile::ExeOther);
    if ((permissions & others) != 0) {
        QFile::setPermissions(directory, owners);
    }
}
