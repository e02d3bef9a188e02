#include "tools/simulator/posix/PrivateDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace simulator
{

bool isPrivateDirectory(const QString &path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0) {
        return false;
    }
    return S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

QString privateDirectory(QString &error)
{
    QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QDir::isAbsolutePath(runtime) && isPrivateDirectory(runtime)) {
        return runtime;
    }

    QString path = QDir::tempPath() + QStringLiteral("/veltrix-%1").arg(::geteuid());
    // mkdir() fails when the name exists, which is fine as long as what is there is ours alone.
    ::mkdir(QFile::encodeName(path).constData(), S_IRWXU);
    if (isPrivateDirectory(path)) {
        return path;
    }
    error = QCoreApplication::translate("PrivateDirectory", "\"%1\" is not a directory of this user alone")
                .arg(path);
    return {};
}

} // namespace simulator
