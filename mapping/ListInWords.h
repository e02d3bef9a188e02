#pragma once

#include <QString>
#include <QStringList>

/// Lists for messages, which have to fit on a screen and into a breath whatever a file holds: the first few,
/// then how many more there are.
namespace ListInWords
{

constexpr int most = 5;         ///< are named
constexpr int longestName = 60; ///< characters of a name

/// @p names in one line, each without line breaks, and cut where it is too long.
QString names(const QStringList &names);

/// @p lines one below the other.
QString lines(const QStringList &lines);

} // namespace ListInWords
