#pragma once

#include <QString>

/// The folder that holds the user's mapping files.
namespace DataDirectory
{

/// The platform's place for the program's data; empty when the platform has none. Needs the application's
/// names.
QString path();

/// Creates @p directory with its parents, makes it the current directory, and copies the mapping files there
/// that stand in @p seedDirectory. A file that is there already is never replaced; a copy can be written by
/// its owner. Failures leave things as they are; an empty @p directory ends the program.
void prepare(const QString &directory, const QString &seedDirectory);

/// Takes from everybody but the owner what rights they have in a folder of the program's own. One that
/// belongs to somebody else, or is not there, stays as it is.
void closeToOthers(const QString &directory);

} // namespace DataDirectory
