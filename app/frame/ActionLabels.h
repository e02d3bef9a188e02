#pragma once

#include <QFont>
#include <QString>

/// The two lines in which an action menu shows the labels of its three layers, and how long they may be. The
/// menus are laid out by this, and whoever publishes mappings checks by it.
namespace ActionLabels
{

/// Pixels, as the fonts' sizes are on a screen of 96 dots per inch: a longer line loses its end.
constexpr int room = 132;

QFont titleFont();  ///< of the first line, the label of Normal
QFont layersFont(); ///< of the second, the labels of Shift 1 and Shift 2

/// Stands between the labels of a line, and so in no label that is easy to read.
constexpr char separator[] = " | ";

/// Whether both lines show whole where fonts have that size. The labels are as they are stored.
bool fit(const QString &normal, const QString &shift1, const QString &shift2);

} // namespace ActionLabels
