#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// The names of keys, as they are stored and as they are shown to the user.
namespace KeyNames
{

/// The name of a Windows virtual-key code, of the code of a key by its character (0x100 plus the character,
/// up to 0xFFFF), or of the toolkit's code of a key that has neither. A code without a name of its own shows
/// as its character, else as that of its low byte, so letters and digits show as themselves.
QString name(int code);

/// The names of several keys in their order, for example "Ctrl + S". The same in every language: it is what
/// is stored.
QString text(const QVector<int> &codes);

/// What is displayed for a text(): each name in the user's language. Anything else stays as it is.
QString translated(const QString &text);

/// How what translated() gives can be written in less room, the longest first: without blanks, then with the
/// modifiers' names cut down as well. Upper and lower case stay. Empty for a text that is no combination of
/// keys.
QStringList shorter(const QString &shown);

} // namespace KeyNames
