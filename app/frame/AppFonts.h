#pragma once

#include <QStringList>

/// The fonts that the program brings along.
namespace AppFonts
{

/// The files in the order in which they are loaded.
QStringList files();

/// Registers @p names from the resource folder @p folder, and lets what the system lacks be drawn with them.
/// Only the first failure of the whole run is logged; the program runs on with the system's fonts.
void load(const QStringList &names = files(), const QString &folder = QStringLiteral(":/fonts/"));

} // namespace AppFonts
