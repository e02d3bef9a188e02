#pragma once

#include <QString>
#include <QStringList>

/// Looks for what is wrong with a library of mappings before it is given to users. A file may be far from
/// what passes here and still be read: reading forgives, publishing does not.
namespace LibraryLint
{

/// What is wrong with the library at @p path, one line each in plain English; empty if nothing is. Needs a
/// QGuiApplication: labels are measured in the fonts of the program (AppFonts::load()).
QStringList faults(const QString &path);

} // namespace LibraryLint
