#include "tests/support/main/Main.h"
#include "tests/unit/ui/DialogRig.h"
#include "ui/OverlayDialog.h"

#include <QSignalSpy>

namespace
{

class Dialog : public OverlayDialog
{
public:
    explicit Dialog(QWidget *parent, Grabs grabs = GrabNothing, QSize panelSize = {304, 137})
        : OverlayDialog(panelSize, grabs, parent)
    {
    }
    using OverlayDialog::addPicture;
    using OverlayDialog::isOn;
    using OverlayDialog::panel;
    using OverlayDialog::setPanelHeight;
};

} // namespace

class tst_OverlayDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAFramelessTranslucentWindowOnTop();
    void thePanelStandsWhereTheFormulaSays_data();
    void thePanelStandsWhereTheFormulaSays();
    void onTheScreenThePanelIsInTheMiddle();
    void thePanelGrowsDownwards();
    void coversItsWindowAndStaysWithIt();
    void dimsThePageWhenShownAndLeavesItDimmed();
    void dimsOnEveryShow();
    void saysWhenItIsHidden();
    void escapeClosesIt();
    void otherKeysDoNot();
    void goesWithThePage();
    void goesWithTheWindow();
    void goesWhenTheProgramQuits();
    void worksWithoutAParent();
    void takesAParentThatIsNoPage();
    void aSheetOfThePageDoesNotReachIn();
    void pictureButtonsShowTheirPictureAtRest();
    void knowsWhatAPlaceLiesOn();
};

void tst_OverlayDialog::isAFramelessTranslucentWindowOnTop()
{
    const PageWindow window;
    const Dialog dialog(window.page);
    QVERIFY(dialog.isWindow());
    QVERIFY(dialog.isHidden());
    QVERIFY(dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QVERIFY(dialog.testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(!dialog.testAttribute(Qt::WA_QuitOnClose));
    QCOMPARE(dialog.minimumSize(), QSize(900, 650));
    QCOMPARE(dialog.maximumSize(), QSize(900, 650));
}

void tst_OverlayDialog::thePanelStandsWhereTheFormulaSays_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<QSize>("panel");
    QTest::addColumn<QPoint>("place");
    // (1919 - 303) / 2, (1079 - 136) / 2 and so on, the halves dropped
    QTest::newRow("1920x1080, shortcut") << QSize(1920, 1080) << QSize(304, 137) << QPoint(808, 471);
    QTest::newRow("1920x1080, MIDI") << QSize(1920, 1080) << QSize(304, 200) << QPoint(808, 440);
    QTest::newRow("1366x768, shortcut") << QSize(1366, 768) << QSize(304, 137) << QPoint(531, 315);
    QTest::newRow("odd") << QSize(1361, 769) << QSize(304, 137) << QPoint(528, 316);
    QTest::newRow("too small, toward zero") << QSize(301, 136) << QSize(304, 137) << QPoint(-1, 0);
}

void tst_OverlayDialog::thePanelStandsWhereTheFormulaSays()
{
    QFETCH(QSize, screen);
    QFETCH(QSize, panel);
    QTEST(OverlayDialog::panelOnScreen(screen, panel), "place");
}

void tst_OverlayDialog::onTheScreenThePanelIsInTheMiddle()
{
    const PageWindow window;
    Dialog dialog(window.page);
    dialog.show();
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QCOMPARE(dialog.panel()->mapToGlobal(QPoint()),
             QPoint((screen.right() - screen.left() - 303) / 2, (screen.bottom() - screen.top() - 136) / 2));
}

void tst_OverlayDialog::thePanelGrowsDownwards()
{
    const PageWindow window;
    Dialog dialog(window.page, OverlayDialog::GrabNothing, {304, 200});
    const QPoint corner = dialog.panel()->pos();
    dialog.setPanelHeight(330);
    dialog.show();
    QCOMPARE(dialog.panel()->geometry(), QRect(corner, QSize(304, 330)));
}

void tst_OverlayDialog::coversItsWindowAndStaysWithIt()
{
    PageWindow window;
    Dialog dialog(window.page);
    window.move(70, 30);
    dialog.show();
    QCOMPARE(dialog.geometry(), window.geometry());
    const QPoint onDialog = dialog.panel()->pos();
    window.move(40, 50);
    QCOMPARE(dialog.geometry(), window.geometry());
    QCOMPARE(dialog.panel()->pos(), onDialog);
    dialog.hide();
    window.move(11, 22);
    dialog.show();
    QCOMPARE(dialog.geometry(), window.geometry());
}

void tst_OverlayDialog::dimsThePageWhenShownAndLeavesItDimmed()
{
    const PageWindow window;
    Dialog dialog(window.page);
    QSignalSpy blur(&dialog, &OverlayDialog::setBlur);
    dialog.show();
    QVERIFY(window.isDimmed());
    dialog.hide();
    QVERIFY(window.isDimmed());
    QCOMPARE(blur.size(), 1);
    QCOMPARE(blur.at(0).at(0).toBool(), true);
}

void tst_OverlayDialog::dimsOnEveryShow()
{
    const PageWindow window;
    Dialog dialog(window.page);
    QSignalSpy blur(&dialog, &OverlayDialog::setBlur);
    for (int i = 0; i < 3; ++i) {
        dialog.show();
        dialog.hide();
    }
    QCOMPARE(blur.size(), 3);
}

void tst_OverlayDialog::saysWhenItIsHidden()
{
    const PageWindow window;
    Dialog dialog(window.page);
    QSignalSpy hidden(&dialog, &OverlayDialog::hidden);
    dialog.hide();
    QCOMPARE(hidden.size(), 0);
    dialog.show();
    QCOMPARE(hidden.size(), 0);
    dialog.hide();
    QCOMPARE(hidden.size(), 1);
    dialog.show();
    dialog.close();
    QCOMPARE(hidden.size(), 2);
}

void tst_OverlayDialog::escapeClosesIt()
{
    const PageWindow window;
    Dialog dialog(window.page);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(dialog.isHidden());
}

void tst_OverlayDialog::otherKeysDoNot()
{
    const PageWindow window;
    Dialog dialog(window.page);
    dialog.show();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Q}) {
        QTest::keyClick(&dialog, key);
    }
    QVERIFY(dialog.isVisible());
}

void tst_OverlayDialog::goesWithThePage()
{
    const PageWindow window;
    Dialog dialog(window.page);
    QSignalSpy hidden(&dialog, &OverlayDialog::hidden);
    dialog.show();
    window.page->hide();
    QVERIFY(dialog.isHidden());
    QCOMPARE(hidden.size(), 1);
}

void tst_OverlayDialog::goesWithTheWindow()
{
    PageWindow window;
    Dialog dialog(window.page);
    dialog.show();
    window.hide();
    QVERIFY(dialog.isHidden());
    window.show();
    QVERIFY(dialog.isHidden());
    dialog.show();
    window.close();
    QVERIFY(dialog.isHidden());
}

void tst_OverlayDialog::goesWhenTheProgramQuits()
{
    const PageWindow window;
    Dialog dialog(window.page);
    QSignalSpy hidden(&dialog, &OverlayDialog::hidden);
    dialog.show();
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    QVERIFY(dialog.isHidden());
    QCOMPARE(hidden.size(), 1);
}

void tst_OverlayDialog::worksWithoutAParent()
{
    Dialog dialog(nullptr);
    dialog.show();
    QCOMPARE(dialog.geometry().size(), QSize(900, 650));
    dialog.hide();
}

void tst_OverlayDialog::takesAParentThatIsNoPage()
{
    QWidget plain;
    plain.show();
    Dialog dialog(&plain);
    dialog.show();
    QCOMPARE(dialog.pos(), plain.geometry().topLeft());
}

void tst_OverlayDialog::aSheetOfThePageDoesNotReachIn()
{
    const auto picture = [](const QString &pageSheet) {
        const PageWindow window;
        window.page->setStyleSheet(pageSheet);
        Dialog dialog(window.page);
        auto *label = new QLabel(QStringLiteral("text"), dialog.panel());
        label->setStyleSheet(QStringLiteral("QLabel { color :#414141;}"));
        dialog.show();
        return dialog.grab().toImage();
    };
    QCOMPARE(picture(QStringLiteral("background-color: red; color: green;")), picture(QString()));
}

void tst_OverlayDialog::pictureButtonsShowTheirPictureAtRest()
{
    const PageWindow window;
    Dialog dialog(window.page);
    const auto *label =
        dialog.addPicture<QLabel>(QStringLiteral("ok"), {205, 105, 87, 22}, QStringLiteral("OK"));
    QCOMPARE(label->parentWidget(), dialog.panel());
    QCOMPARE(label->geometry(), QRect(205, 105, 87, 22));
    QCOMPARE(label->styleSheet(), QStringLiteral("background-image: url(:/buttons/ok_0.png);"));
    QCOMPARE(OverlayDialog::pictureSheet(QStringLiteral("ok"), true),
             QStringLiteral("background-image: url(:/buttons/ok_1.png);"));
    QCOMPARE(label->accessibleName(), QStringLiteral("OK"));
}

void tst_OverlayDialog::knowsWhatAPlaceLiesOn()
{
    const PageWindow window;
    Dialog dialog(window.page);
    const auto *label = dialog.addPicture<QLabel>(QStringLiteral("ok"), {205, 105, 87, 22}, QString());
    const QPoint corner = dialog.panel()->pos() + QPoint(205, 105);
    QVERIFY(dialog.isOn(label, corner));
    QVERIFY(dialog.isOn(label, corner + QPoint(86, 21)));
    QVERIFY(!dialog.isOn(label, corner + QPoint(87, 0)));
    QVERIFY(!dialog.isOn(label, corner + QPoint(0, 22)));
    QVERIFY(!dialog.isOn(label, corner - QPoint(1, 0)));
}

QTEST_MAIN(tst_OverlayDialog)

#include "tst_OverlayDialog.moc"
