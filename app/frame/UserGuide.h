#pragma once

class QString;
class QUrl;

/// Where the user guide is: each page in the language of QLocale(), if it is there in that, else in English.
namespace UserGuide
{

/// The guide that came with the program: "user-guide" in @p programFolder. Without one, the page on the web.
QUrl address(const QString &programFolder);

/// Where help is: the maker's page for it. While that has no address yet, the guide's chapter on trouble, if
/// the guide came with the program.
QUrl help(const QString &programFolder);

/// The chapter on trouble, at @p section: a heading as the page names it ("wayland"), empty for its
/// beginning. The maker's page for help where no guide came with the program.
QUrl troubleshooting(const QString &programFolder, const QString &section);

} // namespace UserGuide
