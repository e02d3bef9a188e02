#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

class QPrinter;
class QWidget;

/// Prints the device page as the user sees it: the device and the action menus around it, as dark text on
/// white paper.
namespace MapPrinter
{

/// Dots per inch that the sheet is printed with: they set its size, nothing is scaled.
constexpr int resolution = 120;

/// Takes the picture of the device and of the menus beside it from @p page, on a black ground. Leaves the
/// page with the program's colour as its ground. On a fine screen the picture has more pixels for the same
/// size (see QImage::devicePixelRatio()).
QImage capture(QWidget &page);

/// Every pixel inverted and opaque, but for those that have exactly one of the drawing's six colours.
QImage recoloured(const QImage &picture);

/// What has no room in the picture: what the labels say that are cut on @p page, a line for each.
QStringList notes(const QWidget &page);

/// Puts @p picture on one sheet of @p printer, and @p notes below it, in two columns. False when the printer
/// does not take it.
bool draw(const QImage &picture, QPrinter &printer, const QStringList &notes = {});

/// Asks the user for a printer, which on a machine without one is a PDF file, and prints. @p page is left
/// untouched when the user does not want to after all. @p dialogWritesFiles tells whether the system's print
/// dialog can be used without a printer (Desktop::printsToFiles()). Returns whether a sheet was printed.
bool askAndPrint(QWidget &page, bool dialogWritesFiles);

/// Asks for the name of a PDF file instead, and prints into that.
bool askAndWritePdf(QWidget &page);

/// All of it: capture, recolour, draw. False, and a line in the log, when the printer does not take it.
bool print(QWidget &page, QPrinter &printer);

/// The same into the PDF file @p fileName. Needs no printer.
bool printToPdf(QWidget &page, const QString &fileName);

} // namespace MapPrinter
