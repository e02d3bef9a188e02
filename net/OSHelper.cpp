#include "net/OSHelper.h"

#include "net/NetLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace
{

#ifdef Q_OS_WIN

// The short form of a path has neither blanks nor other characters that need care.
QString plainPath(const QString &path)
{
    const QString native = QDir::toNativeSeparators(path);
    const auto *name = reinterpret_cast<const wchar_t *>(native.utf16());
    const DWORD size = GetShortPathNameW(name, nullptr, 0);
    QString shortName(static_cast<int>(size), Qt::Uninitialized);
    const DWORD length =
        size == 0 ? 0 : GetShortPathNameW(name, reinterpret_cast<wchar_t *>(shortName.data()), size);
    return length == 0 || length >= size ? native : shortName.left(static_cast<int>(length));
}

#else

QString plainPath(const QString &path)
{
    return path;
}

#endif

#ifdef Q_OS_WIN

// The command interpreter is a program for the console, and would show one for a moment.
void showNoConsole(QProcess &process)
{
    process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments *arguments) {
        arguments->flags =
            (arguments->flags & ~static_cast<unsigned long>(CREATE_NEW_CONSOLE)) | CREATE_NO_WINDOW;
    });
}

#else

void showNoConsole(QProcess &) {}

#endif

bool runUpdater(const char *name, const QString &program, const QStringList &arguments,
                const QString &folder = {})
{
    qCInfo(lcNet) << "[Updater] running" << name << qPrintable(program) << arguments;
    return OSHelper::executeNoWait(program, arguments, folder);
}

// What the interpreter reads as one file name: the path, or, where that holds characters of its own meaning
// (a user's name with a blank, and a system that keeps no short names), the file's name in its folder.
QString readableName(const QString &installer)
{
    return QDir::toNativeSeparators(OSHelper::hasCommandCharacters(installer)
                                        ? QStringLiteral("./") + QFileInfo(installer).fileName()
                                        : installer);
}

} // namespace

OSHelper::System OSHelper::thisSystem()
{
#if defined(Q_OS_WIN)
    return System::Windows;
#elif defined(Q_OS_MACOS)
    return System::MacOs;
#else
    return System::Linux;
#endif
}

bool OSHelper::executeNoWait(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setWorkingDirectory(folder);
    showNoConsole(process);
    if (process.startDetached()) {
        return true;
    }
    qCWarning(lcNet) << "Failed to executeNoWait";
    return false;
}

bool OSHelper::canReplace(System system, const QString &application)
{
    return system == System::Windows || QFileInfo(QFileInfo(application).path()).isWritable();
}

bool OSHelper::startInstaller(System system, const QString &application, const QString &installer)
{
    if (system == System::Windows) {
        return runUpdater("WinZRUpdater", QStringLiteral("cmd"),
                          {QStringLiteral("/C"), readableName(installer)}, QFileInfo(installer).path());
    }
    const QString name =
        system == System::MacOs ? QStringLiteral("OSXZRUpdater.sh") : QStringLiteral("LinuxZRUpdater.sh");
    if (!canReplace(system, application)) {
        qCWarning(lcNet).noquote() << "[Updater] not allowed to replace" << application
                                   << "- the new version is left at" << installer;
        return false;
    }
    const QString script = QFileInfo(installer).path() + QLatin1Char('/') + name;
    QFile::remove(script);
    if (!QFile::copy(QStringLiteral(":/scripts/") + name, script)) {
        qCWarning(lcNet).noquote() << "[Updater] could not write" << script;
        return false;
    }
    return runUpdater(name.chopped(3).toLatin1().constData(), QStringLiteral("/bin/sh"),
                      {script, application, installer});
}

QString OSHelper::installerFile()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (cache.isEmpty()) {
        return {};
    }
    const QString directory = cache + QStringLiteral("/veltrix-update");
    if (thisSystem() == System::Windows) {
        QDir().mkpath(directory); // what does not exist has no short name
        return plainPath(directory) + QStringLiteral("\\veltrix-update.exe");
    }
    return directory + QStringLiteral("/veltrix-update");
}

QString OSHelper::applicationFile()
{
    return QCoreApplication::instance()
               ? applicationFile(QCoreApplication::applicationFilePath(), qEnvironmentVariable("APPIMAGE"),
                                 qEnvironmentVariable("APPDIR"))
               : QString();
}

QString OSHelper::applicationFile(const QString &executable, const QString &image, const QString &imageFolder)
{
    const QString folder = QFileInfo(imageFolder).canonicalFilePath();
    const bool within = !folder.isEmpty() && folder != QLatin1String("/") &&
                        QFileInfo(executable).canonicalFilePath().startsWith(folder + QLatin1Char('/'));
    return within && !image.isEmpty() ? image : executable;
}

bool OSHelper::hasCommandCharacters(const QString &path)
{
    const QString plain = QStringLiteral("_-.~/\\:");
    return std::any_of(path.begin(), path.end(), [&plain](QChar character) {
        return !character.isLetterOrNumber() && !plain.contains(character);
    });
}

#ifdef Q_OS_WIN

bool OSHelper::makePrivateDirectory(const QString &path)
{
    // The user's own folders are closed to others by what they inherit from the profile.
    return QDir().mkpath(path) && !QFileInfo(path).isSymLink();
}

#else

bool OSHelper::makePrivateDirectory(const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    const QByteArray name = QFile::encodeName(path);
    mkdir(name.constData(), S_IRWXU); // if it is there already, what is there is looked at below
    struct stat status = {};
    if (lstat(name.constData(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid()) {
        return false;
    }
    return (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

#endif
