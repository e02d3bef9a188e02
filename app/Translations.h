#pragma once

#include <QLocale>

/// The program's texts in the user's language.
namespace Translations
{

/// Puts the first of @p locale's languages that there is a translation for in force, Qt's own texts with it,
/// until the application object ends. English is what the sources say: it needs none. On Linux the system's
/// languages are those of LANGUAGE, else of LC_ALL, LC_MESSAGES or LANG.
void install(const QLocale &locale = QLocale::system());

} // namespace Translations
