#include "app/frame/Look.h"
#include "tests/support/main/Main.h"
#include "tests/unit/ui_menus/MenuRig.h"
#include "ui/MapPrinter.h"

#include <QFileDialog>
#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTemporaryDir>
#include <QTest>

namespace
{

// The drawing instructions of the first page that has any for a picture.
QByteArray instructions(const QByteArray &pdf)
{
    for (int at = pdf.indexOf("stream\n"); at >= 0; at = pdf.indexOf("stream\n", at + 1)) {
        // Qt's own format: the size of what comes out, in four bytes, and zlib's.
        const QByteArray size("\0\0\x40\0", 4);
        const int begin = at + int(qstrlen("stream\n"));
        QByteArray text = qUncompress(size + pdf.mid(begin, pdf.indexOf("endstream", begin) - begin));
        if (text.contains(" Do")) {
            return text;
        }
    }
    return QByteArray();
}

} // namespace

class tst_MapPrinter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPixelIsKeptOrInverted_data();
    void aPixelIsKeptOrInverted();
    void everyPixelIsVisited();
    void theDevicesColoursInItsDrawingAreKept();
    void thePartWithTheMenusIsCaptured();
    void thePagesGroundIsTheProgramsAfterwards();
    void edgesOnATransparentPageStaySmooth();
    void whiteTextOnThePageIsBlackOnPaper();
    void oneSheetIsWrittenToAPdfWithoutAPrinter();
    void whatTheLabelsCutIsPrintedWhole();
    void aPlaceThatCannotBeWrittenIsToldOnce();
    void aFileIsAskedForWhereTheDialogNeedsAPrinter();
    void noFileIsWrittenWhenTheUserDoesNotWantTo();
};

void tst_MapPrinter::aPixelIsKeptOrInverted_data()
{
    QTest::addColumn<QColor>("seen");
    QTest::addColumn<QColor>("printed");
    for (const QColor &kept : {QColor(171, 166, 166), QColor(161, 75, 40), QColor(160, 53, 46),
                               QColor(62, 86, 166), QColor(85, 128, 95), QColor(152, 131, 44)}) {
        QTest::newRow(qPrintable(kept.name())) << kept << kept;
    }
    QTest::newRow("blue, a shade off") << QColor(62, 86, 167) << QColor(193, 169, 88);
    QTest::newRow("black") << QColor(0, 0, 0) << QColor(255, 255, 255);
    QTest::newRow("white") << QColor(255, 255, 255) << QColor(0, 0, 0);
    QTest::newRow("transparent") << QColor(0, 0, 0, 0) << QColor(255, 255, 255);
    QTest::newRow("a kept colour, half transparent") << QColor(62, 86, 166, 128) << QColor(193, 169, 89);
}

void tst_MapPrinter::aPixelIsKeptOrInverted()
{
    QFETCH(QColor, seen);
    QFETCH(QColor, printed);
    QImage picture(1, 1, QImage::Format_ARGB32);
    picture.setPixelColor(0, 0, seen);
    const QColor result = MapPrinter::recoloured(picture).pixelColor(0, 0);
    QCOMPARE(result.rgba(), printed.rgba());
    QCOMPARE(result.alpha(), 255);
}

void tst_MapPrinter::everyPixelIsVisited()
{
    QImage picture(780, 490, QImage::Format_RGB32); // another format than the result's
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            picture.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 256));
        }
    }
    const QImage printed = MapPrinter::recoloured(picture);
    QCOMPARE(printed.size(), picture.size());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb expected = qRgb(255 - x % 256, 255 - y % 256, 255 - (x + y) % 256);
            if (printed.pixel(x, y) != expected) {
                QCOMPARE(QColor(printed.pixel(x, y)).name(), QColor(expected).name());
            }
        }
    }
}

void tst_MapPrinter::theDevicesColoursInItsDrawingAreKept()
{
    const QImage drawing = QImage(QStringLiteral(":/icons/zr.png")).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(drawing.size(), QSize(402, 192));
    const QImage printed = MapPrinter::recoloured(drawing);
    QSet<QRgb> kept;
    for (int y = 0; y < drawing.height(); ++y) {
        for (int x = 0; x < drawing.width(); ++x) {
            if (qAlpha(drawing.pixel(x, y)) == 255 && printed.pixel(x, y) == drawing.pixel(x, y)) {
                kept.insert(drawing.pixel(x, y));
            }
        }
    }
    QCOMPARE(kept.size(), 6);
}

void tst_MapPrinter::thePartWithTheMenusIsCaptured()
{
    QWidget page;
    page.setAttribute(Qt::WA_StyledBackground);
    page.resize(900, 650);
    QLabel corner(&page);
    corner.setStyleSheet(QStringLiteral("background-color:#010203"));
    corner.setGeometry(60, 120, 1, 1);
    QLabel otherCorner(&page);
    otherCorner.setStyleSheet(QStringLiteral("background-color:#040506"));
    otherCorner.setGeometry(839, 609, 1, 1);

    const QImage picture = MapPrinter::capture(page);
    QCOMPARE(picture.size(), QSize(780, 490));
    QCOMPARE(picture.pixelColor(0, 0).name(), QStringLiteral("#010203"));
    QCOMPARE(picture.pixelColor(779, 489).name(), QStringLiteral("#040506"));
    QCOMPARE(picture.pixelColor(1, 1).name(), QStringLiteral("#000000"));
}

void tst_MapPrinter::thePagesGroundIsTheProgramsAfterwards()
{
    QWidget page;
    page.resize(900, 650);
    page.setStyleSheet(QStringLiteral("background-color:red"));
    MapPrinter::capture(page);
    QCOMPARE(page.styleSheet(), QStringLiteral("background-color:#5342d9"));
}

void tst_MapPrinter::edgesOnATransparentPageStaySmooth()
{
    QWidget page; // draws no ground of its own, whatever its sheet says
    page.setAttribute(Qt::WA_NoSystemBackground);
    page.resize(900, 650);
    QLabel text(QStringLiteral("OOO"), &page);
    text.setGeometry(100, 200, 300, 100);
    text.setStyleSheet(QStringLiteral("color: white; background-color: rgba(0,0,0,0); font-size: 60px;"));
    const QImage printed = MapPrinter::recoloured(MapPrinter::capture(page));
    int black = 0;
    int grey = 0;
    for (int y = 80; y < 180; ++y) {
        for (int x = 40; x < 340; ++x) {
            const int value = qGray(printed.pixel(x, y));
            black += value < 8 ? 1 : 0;
            grey += value >= 8 && value < 248 ? 1 : 0;
        }
    }
    QVERIFY(black > 100);
    QVERIFY(grey > 20);
}

void tst_MapPrinter::whiteTextOnThePageIsBlackOnPaper()
{
    QWidget page;
    page.setAttribute(Qt::WA_StyledBackground);
    page.setStyleSheet(QStringLiteral("background-color:#5342d9"));
    page.resize(900, 650);
    QLabel block(&page);
    block.setStyleSheet(QStringLiteral("background-color:white"));
    block.setGeometry(160, 220, 10, 10);
    const QImage printed = MapPrinter::recoloured(MapPrinter::capture(page));
    QCOMPARE(printed.pixelColor(105, 105), QColor(Qt::black));
    QCOMPARE(printed.pixelColor(200, 200), QColor(Qt::white));
}

void tst_MapPrinter::oneSheetIsWrittenToAPdfWithoutAPrinter()
{
    const QTemporaryDir folder;
    QWidget page;
    page.resize(900, 650);
    const QString name = folder.filePath(QStringLiteral("map.pdf"));
    QVERIFY(MapPrinter::printToPdf(page, name));
    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    QVERIFY(content.startsWith("%PDF-"));
    QVERIFY(content.contains("/Count 1"));
    QVERIFY(content.contains("/Width 780"));
    QVERIFY(content.contains("/Height 490"));
    const QByteArray drawn = instructions(content);
    QVERIFY2(drawn.contains("0.600000000 0 0 -0.600000000"), drawn.constData()); // 72 / 120
    QVERIFY2(drawn.contains("1 0 0 1 110 0 cm"), drawn.constData());
    QVERIFY2(drawn.contains("780 0 0 -490 0 490 cm"), drawn.constData());

    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath(QStringLiteral("other.pdf")));
    QVERIFY(MapPrinter::print(page, printer));
    QCOMPARE(printer.resolution(), 120);
    // All of it is on the paper.
    QVERIFY(printer.pageRect(QPrinter::DevicePixel).width() >= 110 + 780);
}

void tst_MapPrinter::whatTheLabelsCutIsPrintedWhole()
{
    MenuRig rig(3);
    QCOMPARE(MapPrinter::notes(rig.page()), QStringList());
    const QTemporaryDir folder;
    const auto printed = [&](const QString &name) {
        MapPrinter::printToPdf(rig.page(), folder.filePath(name));
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray before = printed(QStringLiteral("before.pdf"));
    QVERIFY(!before.contains("/FontFile"));

    rig.menu().loadShorcut(1, 17, 18, 44, QStringLiteral("Ctrl + Alt + PrtScn"));
    rig.menu().loadShorcut(2, 17, 18, 33, QStringLiteral("Ctrl + Alt + PgUp"));
    QCOMPARE(MapPrinter::notes(rig.page()).size(), 2);
    const QByteArray after = printed(QStringLiteral("after.pdf"));
    QVERIFY(after.contains("/FontFile")); // letters below the picture
    QVERIFY(after.contains("/Count 1"));

    // On a sheet of paper, seen: below the picture, in its width, dark.
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath(QStringLiteral("most.pdf")));
    QStringList most;
    for (int i = 0; i < 30; ++i) {
        most << QStringLiteral("Button %1, Shift 1: Ctrl + Alt + PrtScn").arg(i);
    }
    QImage picture(780, 490, QImage::Format_ARGB32);
    picture.fill(Qt::white);
    QVERIFY(MapPrinter::draw(picture, printer, most));
    QFontMetrics metrics(Look::font(Look::Face::Page, 9), &printer);
    QVERIFY(520 + 15 * metrics.lineSpacing() < printer.pageRect(QPrinter::DevicePixel).height());
    QVERIFY(metrics.horizontalAdvance(most.last()) < 390);
}

void tst_MapPrinter::aPlaceThatCannotBeWrittenIsToldOnce()
{
    QWidget page;
    page.resize(900, 650);
    QTest::ignoreMessage(QtWarningMsg, "QPainter::begin(): Returned false");
    QTest::ignoreMessage(QtWarningMsg, "The printer does not take the map");
    QVERIFY(!MapPrinter::printToPdf(page, QStringLiteral("/nonexistent/folder/map.pdf")));
    QCOMPARE(page.styleSheet(), QStringLiteral("background-color:#5342d9"));
}

void tst_MapPrinter::aFileIsAskedForWhereTheDialogNeedsAPrinter()
{
    const QTemporaryDir folder;
    QWidget page;
    page.resize(900, 650);
    QTimer::singleShot(0, &page, [&folder] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        QVERIFY(dialog->selectedFiles().constFirst().endsWith(QLatin1String("/Veltrix.pdf")));
        dialog->selectFile(folder.filePath(QStringLiteral("sheet")));
        static_cast<QDialog *>(dialog)->accept();
    });
    QVERIFY(MapPrinter::askAndWritePdf(page));
    QFile file(folder.filePath(QStringLiteral("sheet.pdf")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.read(5) == "%PDF-");
}

void tst_MapPrinter::noFileIsWrittenWhenTheUserDoesNotWantTo()
{
    QWidget page;
    page.setStyleSheet(QStringLiteral("background-color:red"));
    QTimer::singleShot(0, &page, [] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->reject();
    });
    QVERIFY(!MapPrinter::askAndWritePdf(page));
    QCOMPARE(page.styleSheet(), QStringLiteral("background-color:red"));
}

QTEST_MAIN(tst_MapPrinter)
#include "tst_MapPrinter.moc"
