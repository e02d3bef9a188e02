#pragma once

class QString;
class QUrl;

/// Where the user guide is.
namespace UserGuide
{

/// The guide that came with the program in @p programFolder: "user-guide" beside it (Windows, a build folder)
/// or in the documentation of the prefix, which is one folder up (bin) or two (lib/veltrix). Without one, the
/// page on the web.
QUrl address(const QString &programFolder);

} // namespace UserGuide
