#pragma once

#include <QString>
#include <QVector>

/// The names under which keys are shown to the user.
namespace KeyNames
{

/// The name of a Windows virtual-key code (or of the toolkit's code of a key that has none). A code without a
/// name of its own shows as the character of its low byte, so letters and digits show as themselves.
QString name(int code);

/// The names of several keys in their order, for example "Ctrl + S".
QString text(const QVector<int> &codes);

} // namespace KeyNames
