#pragma once

class QString;
class QUrl;

/// Where the user guide is.
namespace UserGuide
{

/// The guide that came with the program: "user-guide" in @p programFolder. Without one, the page on the web.
QUrl address(const QString &programFolder);

} // namespace UserGuide
