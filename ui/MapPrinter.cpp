#include "ui/MapPrinter.h"

#include "app/frame/Look.h"
#include "ui/ComboMenu.h"
#include "ui/UiLog.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QPainter>
#include <QPixmap>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStandardPaths>
#include <QWidget>

#include <algorithm>
#include <array>

namespace
{

// The device's picture and both columns of action menus, on the page.
constexpr QRect printedPart(60, 120, 780, 490);
constexpr QPoint sheetPlace(110, 0);

constexpr int notesTop = 520; // on the sheet
constexpr int notesColumn = printedPart.width() / 2;
constexpr int notePoints = 9;

const QLatin1String printStyle("background-color:black");

// The colours of the device's buttons in its drawing. Drawing and list have to follow each other.
constexpr std::array<QRgb, 6> keptColours{
    qRgb(171, 166, 166), qRgb(161, 75, 40), qRgb(160, 53, 46),
    qRgb(62, 86, 166),   qRgb(85, 128, 95), qRgb(152, 131, 44),
};

constexpr QRgb printedColour(QRgb colour)
{
    for (const QRgb kept : keptColours) {
        if (colour == kept) {
            return colour;
        }
    }
    return qRgb(255 - qRed(colour), 255 - qGreen(colour), 255 - qBlue(colour));
}

// Without a sheet of its own, the page's ground would reach into the dialog, under black letters.
const QLatin1String dialogStyle("QWidget { background-color: #f6f6f9; color: #2d2d2d; }"
                                "QLabel, QGroupBox { background-color: transparent; }"
                                "QLineEdit, QAbstractSpinBox, QAbstractItemView { background-color: white; }"
                                "QPushButton, QToolButton, QComboBox { background-color: #e6e6ee; }"
                                ":disabled { color: #6e6e6e; }");

// Before it has been polished, a widget keeps what its children know of an earlier sheet or of its parent's.
void setSheet(QWidget &widget, const QString &sheet)
{
    widget.ensurePolished();
    widget.setStyleSheet(sheet);
}

/// Ends a dialog, and those that it has opened, when a page is hidden: it has slid away, with the device
/// gone.
class GoesWithPage : public QObject
{
    Q_DISABLE_COPY_MOVE(GoesWithPage)

public:
    GoesWithPage(QWidget &page, QDialog &dialog)
        : m_dialog(dialog)
    {
        page.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Hide && !event->spontaneous()) {
            const QList<QDialog *> inner = m_dialog.findChildren<QDialog *>();
            for (QDialog *each : inner) {
                each->reject();
            }
            m_dialog.reject();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QDialog &m_dialog;
};

// Where the user looks for documents. The folder proposed otherwise is the program's own, with its mappings.
QString proposedFile()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return (QFileInfo::exists(documents) ? documents : QDir::homePath()) + QStringLiteral("/Veltrix.pdf");
}

} // namespace

QImage MapPrinter::capture(QWidget &page)
{
    setSheet(page, printStyle);
    const QPixmap cut = page.grab(printedPart);
    page.setStyleSheet(Look::pageSheet());

    // What the page leaves transparent would otherwise spoil the edges of the letters.
    QImage picture(cut.size(), QImage::Format_ARGB32);
    picture.setDevicePixelRatio(cut.devicePixelRatio());
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.drawPixmap(0, 0, cut);
    return picture;
}

QImage MapPrinter::recoloured(const QImage &picture)
{
    QImage printed = picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < printed.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(printed.scanLine(y));
        std::transform(line, line + printed.width(), line, printedColour);
    }
    return printed;
}

QStringList MapPrinter::notes(const QWidget &page)
{
    QStringList lines;
    const QList<ComboMenu *> menus = page.findChildren<ComboMenu *>();
    for (const ComboMenu *menu : menus) {
        lines << menu->cutLabels();
    }
    return lines;
}

bool MapPrinter::draw(const QImage &picture, QPrinter &printer, const QStringList &notes)
{
    printer.setResolution(resolution);
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    // Or a PDF file gets a JPEG picture, with blurred letters and only nearly the kept colours.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(sheetPlace, picture);
    painter.setFont(Look::font(Look::Face::Page, notePoints));
    painter.setPen(Look::ink);
    const int height = painter.fontMetrics().lineSpacing();
    const int rows = (notes.size() + 1) / 2;
    for (int i = 0; i < notes.size(); ++i) {
        const QPoint corner(sheetPlace.x() + (i / rows) * notesColumn, notesTop + (i % rows) * height);
        painter.drawText(QRect(corner, QSize(notesColumn, height)), Qt::AlignLeft | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(notes.at(i), Qt::ElideMiddle, notesColumn));
    }
    return painter.end();
}

bool MapPrinter::askAndPrint(QWidget &page, bool dialogWritesFiles)
{
    if (!dialogWritesFiles && QPrinterInfo::availablePrinterNames().isEmpty()) {
        return askAndWritePdf(page);
    }
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setDocName(QCoreApplication::translate("MapPrinter", "Veltrix map"));
    if (QPrinterInfo::availablePrinterNames().isEmpty()) {
        printer.setOutputFileName(proposedFile());
    }
    QPrintDialog dialog(&printer, &page);
    dialog.setWindowTitle(QCoreApplication::translate("MapPrinter", "Print ZR Map"));
    setSheet(dialog, dialogStyle);
    const GoesWithPage ends(page, dialog);
    return dialog.exec() == QDialog::Accepted && print(page, printer);
}

bool MapPrinter::askAndWritePdf(QWidget &page)
{
    QFileDialog dialog(&page, QCoreApplication::translate("MapPrinter", "Print ZR Map"), proposedFile(),
                       QCoreApplication::translate("MapPrinter", "PDF files") + QStringLiteral(" (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(proposedFile());
    setSheet(dialog, dialogStyle);
    const GoesWithPage ends(page, dialog);
    return dialog.exec() == QDialog::Accepted && printToPdf(page, dialog.selectedFiles().constFirst());
}

bool MapPrinter::print(QWidget &page, QPrinter &printer)
{
    if (draw(recoloured(capture(page)), printer, notes(page))) {
        return true;
    }
    qCWarning(lcUi) << "The printer does not take the map";
    return false;
}

bool MapPrinter::printToPdf(QWidget &page, const QString &fileName)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    return print(page, printer);
}
