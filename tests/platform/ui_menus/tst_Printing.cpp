#include "MenusOnServer.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/RunOnServer.h"
#include "ui/MapPrinter.h"

#include <QComboBox>
#include <QDialog>
#include <QHash>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>

/// The printed map, and the dialogs for printing it and for writing it to a file.
class tst_Printing : public QObject, private MenusOnServer
{
    Q_OBJECT

public:
    explicit tst_Printing(const XServer &server)
        : MenusOnServer(server)
    {
    }

private Q_SLOTS:
    void initTestCase() { beginAll(); }
    void init() { begin(); }
    void cleanup() { end(); }

    void thePrintedMapIsDarkOnWhite();
    void aCancelledPrintLeavesThePageUntouched();
    void thePrintDialogGoesWithItsPage();
    void theDialogForAFileGoesWithItsPage();
    void theMapIsPrintedToAFileByTheDialog();
};

void tst_Printing::thePrintedMapIsDarkOnWhite()
{
    m_menus.at(0)->loadShorcut(0, 17, 90, -1, QStringLiteral("Ctrl + Z"));
    const QImage printed = MapPrinter::recoloured(MapPrinter::capture(*m_page));
    QCOMPARE(printed.size(), QSize(780, 490) * m_page->devicePixelRatioF());
    QCOMPARE(printed.pixelColor(2, 2), QColor(Qt::white));
    QHash<QRgb, int> count;
    int dark = 0;
    for (int y = 0; y < printed.height(); ++y) {
        for (int x = 0; x < printed.width(); ++x) {
            ++count[printed.pixel(x, y)];
            dark += qGray(printed.pixel(x, y)) < 64 ? 1 : 0;
        }
    }
    QVERIFY(count.value(qRgb(255, 255, 255)) > printed.width() * printed.height() / 2);
    QVERIFY(dark > 100); // the texts
    for (const QRgb kept : {qRgb(171, 166, 166), qRgb(161, 75, 40), qRgb(160, 53, 46), qRgb(62, 86, 166),
                            qRgb(85, 128, 95), qRgb(152, 131, 44)}) {
        QVERIFY2(count.value(kept) > 100, qPrintable(QColor(kept).name()));
    }
}

void tst_Printing::aCancelledPrintLeavesThePageUntouched()
{
    m_page->setStyleSheet(QStringLiteral("background-color:red"));
    QString title;
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        title = dialog->windowTitle();
        QCOMPARE(dialog->parentWidget(), m_page.get());
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    QVERIFY(!MapPrinter::askAndPrint(*m_page, true));
    QCOMPARE(title, QStringLiteral("Print ZR Map"));
    QCOMPARE(m_page->styleSheet(), QStringLiteral("background-color:red"));
}

void tst_Printing::thePrintDialogGoesWithItsPage()
{
    QPointer<QWidget> inner;
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        // Where the name of the file is chosen, say: it has a loop of its own.
        QTimer::singleShot(0, this, [&] { m_page->hide(); });
        inner = new QDialog(dialog);
        static_cast<QDialog *>(inner.data())->exec();
    });
    QVERIFY(!MapPrinter::askAndPrint(*m_page, true));
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!m_page->isVisible());
}

void tst_Printing::theDialogForAFileGoesWithItsPage()
{
    bool stayed = false;
    QTimer::singleShot(0, this, [&] {
        QPointer<QWidget> dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        m_page->hide();
        QTimer::singleShot(0, this, [dialog, &stayed] {
            stayed = dialog && dialog->isVisible();
            if (stayed) {
                dialog->close();
            }
        });
    });
    QVERIFY(!MapPrinter::askAndWritePdf(*m_page));
    QCoreApplication::processEvents();
    QVERIFY(!stayed);
}

void tst_Printing::theMapIsPrintedToAFileByTheDialog()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("map.pdf"));
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        // Whatever printers there are.
        auto *printers = dialog->findChild<QComboBox *>(QStringLiteral("printers"));
        QVERIFY(printers);
        printers->setCurrentIndex(printers->findText(QStringLiteral("PDF"), Qt::MatchContains));
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("filename"));
        QVERIFY(name && name->isVisible());
        QVERIFY2(name->text().contains(QLatin1String("/Veltrix")), qPrintable(name->text()));
        name->setText(file);
        // The page's colours stay outside.
        const QImage ground = dialog->grab({2, 2, 1, 1}).toImage();
        QVERIFY(ground.pixelColor(0, 0).lightness() > 200);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QVERIFY(MapPrinter::askAndPrint(*m_page, true));
    QFile sheet(file);
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    QVERIFY(sheet.read(5) == "%PDF-");
    QCOMPARE(m_page->styleSheet(), QStringLiteral("background-color:#5342d9"));
}

int main(int argc, char *argv[])
{
    return runOnServer<tst_Printing>(argc, argv, XServer::Options::atScale());
}

#include "tst_Printing.moc"
