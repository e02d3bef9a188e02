#pragma once

class QString;

/// A message from the desktop, beside its clock or wherever it shows such. Takes no focus and waits for
/// nothing: a desktop without notifications shows none.
namespace DesktopNotification
{

void show(const QString &title, const QString &text);

} // namespace DesktopNotification
