#include "app/frame/WelcomeWindow.h"

#include <QLabel>
#include <QtTest>

class tst_WelcomeWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsTexts();
    void indicatorFollowsTheConnection();
    void saysWhyThePortIsRefused();
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

QTEST_MAIN(tst_WelcomeWindow)
#include "tst_WelcomeWindow.moc"
