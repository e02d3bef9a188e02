#pragma once

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QString>

/// How the program looks: its colour, its fonts, and the labels that its pages and dialogs are made of.
///
/// A style sheet that is written out whole where it is used says exactly what it says, colour included.
namespace Look
{

/// The program's own colour, the ground of the pages.
constexpr QColor accent(0x53, 0x42, 0xd9);

/// Text on white.
constexpr QColor ink(0x2d, 0x2d, 0x2d);

/// The style sheet of a page, but while it is printed.
QString pageSheet();

/// @p rules, with the program's colour in each place that says "@accent".
QString accented(const char *rules);

enum class Face {
    Page,
    DialogLight,
    DialogStrong,
    Menu, ///< the system's own on Windows
};

/// @p pointSize in points; @p weight as QFont counts.
QFont font(Face face, int pointSize, int weight = QFont::Normal);

/// A label that shows a picture, or nothing but its style sheet. It is @p parent's, like the next.
template <typename Label = QLabel>
Label *addPicture(QWidget *parent, const QRect &place, const QString &sheet)
{
    auto *label = new Label(parent);
    label->setGeometry(place);
    label->setStyleSheet(sheet);
    return label;
}

/// A label with a text; see FittingText for one that is too wide for @p place.
QLabel *addText(QWidget *parent, const QString &text, const QRect &place, const QString &sheet,
                const QFont &font, Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);

} // namespace Look
