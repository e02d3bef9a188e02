#include "app/frame/ClickableLabel.h"
#include "app/frame/WelcomeWindow.h"
#include "tests/support/main/Main.h"
#include "tests/unit/frame/Browser.h"

#include <QAccessible>
#include <QLabel>
#include <QTest>

class tst_WelcomeWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsTexts();
    void indicatorFollowsTheConnection();
    void saysWhyThePortIsRefused();
    void saysWhatWasFound();
    void leadsToHelp_data();
    void leadsToHelp();
};

void tst_WelcomeWindow::showsItsTexts()
{
    const WelcomeWindow window;
    QStringList texts;
    for (const QLabel *label : window.findChildren<QLabel *>()) {
        texts << label->text() + QLatin1Char('|') + label->styleSheet();
    }
    QVERIFY(texts.contains(
        QStringLiteral("Welcome to VELTRIX setup panel.|QLabel { color : rgba(255,255,255,0.87); }")));
    QVERIFY(texts.contains(QStringLiteral(
        "Please connect your device with a usb cable.|QLabel { color : rgba(255,255,255,0.57); }")));
    QVERIFY(texts.contains(QStringLiteral("Connect|QLabel { color : rgba(255,255,255,1); }")));
    QVERIFY(texts.contains(QStringLiteral("The panel opens by itself as soon as the device is found.|"
                                          "QLabel { color : rgba(255,255,255,0.32); }")));
    QVERIFY(texts.contains(QStringLiteral("|background-image: url(:/icons/usb-cable.png)")));
    QVERIFY(texts.contains(QStringLiteral("|background-image: url(:/icons/underline.png)")));
}

void tst_WelcomeWindow::indicatorFollowsTheConnection()
{
    WelcomeWindow window;
    const auto *indicator = window.findChild<QLabel *>(QStringLiteral("indicator"));
    QCOMPARE(indicator->styleSheet(), QStringLiteral("background-image: url(:/icons/square.png)"));
    window.setConnected(true);
    QCOMPARE(indicator->styleSheet(), QStringLiteral("background-image: url(:/icons/square-c.png)"));
    window.setConnected(false);
    QCOMPARE(indicator->styleSheet(), QStringLiteral("background-image: url(:/icons/square.png)"));
}

void tst_WelcomeWindow::saysWhyThePortIsRefused()
{
    WelcomeWindow window;
    const auto *refusal = window.findChild<QLabel *>(QStringLiteral("refusal"));
    QCOMPARE(refusal->text(), QString());
    window.showRefusal(QStringLiteral("Permission denied"));
    QCOMPARE(refusal->text(),
             QStringLiteral("The device is there, but its port cannot be opened: Permission denied"));
    window.showRefusal(QString());
    QCOMPARE(refusal->text(), QString());
}

void tst_WelcomeWindow::saysWhatWasFound()
{
    WelcomeWindow window;
    const auto *line = window.findChild<QLabel *>(QStringLiteral("finding"));
    const QString faint = line->styleSheet();
    QCOMPARE(line->text(), QStringLiteral("The panel opens by itself as soon as the device is found."));
    window.showFinding(QStringLiteral("a problem"), true, QUrl());
    QCOMPARE(line->text(), QStringLiteral("a problem"));
    QCOMPARE(line->accessibleName(), QStringLiteral("a problem"));
    QCOMPARE(line->styleSheet(), QStringLiteral("QLabel { color : rgba(255,255,255,0.87); }"));
    window.showFinding(QStringLiteral("nothing"), false, QUrl());
    QCOMPARE(line->text(), QStringLiteral("nothing"));
    QCOMPARE(line->styleSheet(), faint);
}

void tst_WelcomeWindow::leadsToHelp_data()
{
    QTest::addColumn<QString>("by");
    for (const char *by : {"mouse", "keyboard", "screen reader"}) {
        QTest::newRow(by) << QString::fromLatin1(by);
    }
}

void tst_WelcomeWindow::leadsToHelp()
{
    QFETCH(QString, by);
    WelcomeWindow window;
    window.resize(900, 650);
    window.show();
    const QUrl page(QStringLiteral("tst-help:troubleshooting.html#here"));
    window.showFinding(QStringLiteral("a problem"), true, page);
    auto *help = window.findChild<ClickableLabel *>(QStringLiteral("help"));
    QCOMPARE(help->accessibleName(), QStringLiteral("Trouble-shooting"));
    QVERIFY(help->geometry().top() >= 624 && window.rect().contains(help->geometry()));

    const Browser browser(page.scheme());
    if (by == QLatin1String("mouse")) {
        QTest::mouseClick(help, Qt::LeftButton);
    } else if (by == QLatin1String("keyboard")) {
        QVERIFY((help->focusPolicy() & Qt::TabFocus) != 0);
        QTest::keyClick(help, Qt::Key_Return);
    } else {
        QAccessibleInterface *told = QAccessible::queryAccessibleInterface(help);
        told->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
    }
    QCOMPARE(browser.opened, QList<QUrl>{page});
}

QTEST_MAIN(tst_WelcomeWindow)
#include "tst_WelcomeWindow.moc"
