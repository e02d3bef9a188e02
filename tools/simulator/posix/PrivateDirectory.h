#pragma once

#include <QString>

namespace simulator
{

/// The directory in which the device is published: $XDG_RUNTIME_DIR where it is as it should be (ours, nobody
/// else may enter), otherwise "veltrix-UID" below the directory for temporary files, made with mode 0700.
///
/// Returns an empty string, with @p error set, when that name is taken by something that others can reach.
QString privateDirectory(QString &error);

/// Whether @p path is a directory (not a link to one) of this user that nobody else may enter.
bool isPrivateDirectory(const QString &path);

} // namespace simulator
