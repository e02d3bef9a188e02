#pragma once

#include <QString>
#include <QStringList>

/// What the updater needs of the operating system.
namespace OSHelper
{

enum class System { Windows, Linux, MacOs };

/// The system that the program was built for.
System thisSystem();

/// Starts @p program detached, each argument as one argument whatever characters it has, in @p folder, or
/// where this program is. A program for the console gets no window. False, with a log line, when it could not
/// be started.
bool executeNoWait(const QString &program, const QStringList &arguments, const QString &folder = {});

/// Whether an update may replace the program at @p application. An installer of Windows asks for the rights
/// that it needs.
bool canReplace(System system, const QString &application);

/// Starts what replaces the program at @p application by the downloaded @p installer, and logs it: Windows
/// runs the installer itself, the others run the updater script from ":/scripts/", which is put beside the
/// installer for that. False, with a log line, when nothing could be started; the installer then stays.
bool startInstaller(System system, const QString &application, const QString &installer);

/// A place for the installer in a directory of its own. On Windows it is free of characters that the command
/// interpreter treats specially, where the system offers such a place.
QString installerFile();

/// The file that an update replaces: the running program's, or the image that it is run from. Empty without
/// an application object.
QString applicationFile();

/// The same for @p executable: the image that APPIMAGE names, if the executable lies in the folder that
/// APPDIR names. Every program that another one's image has started inherits both, so neither is believed by
/// itself.
QString applicationFile(const QString &executable, const QString &image, const QString &imageFolder);

/// Whether the command interpreter of Windows would read @p path as anything but one file name. It never gets
/// to read more of the installer's path than has no such characters; the file's own name must have none.
bool hasCommandCharacters(const QString &path);

/// Makes sure that @p path is a directory that only this user can write; creates it if needed. False if it
/// is a link, somebody else's, or open to others.
bool makePrivateDirectory(const QString &path);

} // namespace OSHelper
