#include "app/frame/AppInfo.h"
#include "app/frame/ClickableLabel.h"
#include "app/frame/LicenceDialog.h"
#include "app/frame/UserGuide.h"
#include "app/frame/ZRBaseWindow.h"
#include "net/ZRUpdater.h"
#include "tests/support/main/Main.h"
#include "tests/unit/frame/Browser.h"

#include <QAccessible>
#include <QGraphicsBlurEffect>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

class tst_ZRBaseWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void headerTellsTheVersionAndThreeLinks();
    void theVersionShowsTheLicences_data();
    void theVersionShowsTheLicences();
    void linksOpenTheirPages_data();
    void linksOpenTheirPages();
    void anOfferBringsTheUpdatePanel();
    void aDownloadBringsItsPanelAndShowsItsProgress();
    void progressIsAWholePercentage();
    void anEndOfAnyKindBringsTheHeaderBack();
    void headerAndPanelsHaveTheirStyles();
    void blurIsMadeOnFirstUseAndSwitched();
    void severalPagesShowTheSameOffer();

private:
    bool shows(const QString &text) const;
    QPushButton *button(const QString &text) const;

    std::unique_ptr<ZRUpdater> m_updater;
    std::unique_ptr<ZRBaseWindow> m_window;
};

void tst_ZRBaseWindow::init()
{
    m_window.reset();
    m_updater = std::make_unique<ZRUpdater>();
    m_window = std::make_unique<ZRBaseWindow>(m_updater.get());
    m_window->resize(900, 650);
    m_window->show();
}

bool tst_ZRBaseWindow::shows(const QString &text) const
{
    const auto labels = m_window->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(), [&](const QLabel *label) {
        return label->isVisible() && label->text().contains(text);
    });
}

QPushButton *tst_ZRBaseWindow::button(const QString &text) const
{
    for (QPushButton *button : m_window->findChildren<QPushButton *>()) {
        if (button->text() == text) {
            return button;
        }
    }
    return nullptr;
}

void tst_ZRBaseWindow::headerTellsTheVersionAndThreeLinks()
{
    QVERIFY(shows(QStringLiteral("VERSION 1.10")));
    for (const auto *link : {"Contact", "User Guide", "Help"}) {
        QVERIFY2(shows(QLatin1String(link)), link);
    }
}

void tst_ZRBaseWindow::theVersionShowsTheLicences_data()
{
    QTest::addColumn<QString>("by");
    for (const char *by : {"mouse", "keyboard", "screen reader"}) {
        QTest::newRow(by) << QString::fromLatin1(by);
    }
}

void tst_ZRBaseWindow::theVersionShowsTheLicences()
{
    QFETCH(QString, by);
    auto *version = m_window->findChild<ClickableLabel *>(QStringLiteral("version"));
    QCOMPARE(version->styleSheet(), QStringLiteral("color:rgba(255,255,255,0.32)"));
    QCOMPARE(version->toolTip(), QStringLiteral("Shows the licences of Veltrix and of what it is built on"));
    if (by == QLatin1String("mouse")) {
        QTest::mouseClick(version, Qt::LeftButton);
    } else if (by == QLatin1String("keyboard")) {
        QVERIFY((version->focusPolicy() & Qt::TabFocus) != 0);
        QTest::keyClick(version, Qt::Key_Return);
    } else {
        QAccessible::queryAccessibleInterface(version)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
    }
    QPointer<LicenceDialog> dialog = m_window->findChild<LicenceDialog *>();
    QVERIFY(dialog && dialog->isVisible());
    const auto *text = dialog->findChild<QPlainTextEdit *>();
    QVERIFY(text->isReadOnly());
    QVERIFY(text->toPlainText().contains(QLatin1String("GNU LESSER GENERAL PUBLIC LICENSE")));
    QTest::mouseClick(version, Qt::LeftButton);
    QCOMPARE(m_window->findChildren<LicenceDialog *>().size(), 1); // once is enough
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(!dialog);
}

void tst_ZRBaseWindow::linksOpenTheirPages_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QUrl>("page");
    QTest::newRow("Contact") << QStringLiteral("Contact") << QUrl(QLatin1String(AppInfo::contactPage));
    QTest::newRow("User Guide") << QStringLiteral("User Guide")
                                << UserGuide::address(QCoreApplication::applicationDirPath());
    QTest::newRow("Help") << QStringLiteral("Help")
                          << UserGuide::help(QCoreApplication::applicationDirPath());
}

void tst_ZRBaseWindow::linksOpenTheirPages()
{
    QFETCH(QString, link);
    QFETCH(QUrl, page);
    const auto labels = m_window->findChildren<QLabel *>();
    const auto label = std::find_if(labels.begin(), labels.end(),
                                    [&](const QLabel *each) { return each->accessibleName() == link; });
    QVERIFY(label != labels.end());

    const Browser browser(page.scheme());
    QTest::mouseClick(*label, Qt::LeftButton, Qt::NoModifier, QPoint(8, (*label)->height() / 2));
    QCOMPARE(browser.opened, QList<QUrl>{page});
}

void tst_ZRBaseWindow::anOfferBringsTheUpdatePanel()
{
    QVERIFY(!button(QStringLiteral("Update"))->isVisible());
    Q_EMIT m_updater->onUpdateAvailable(QStringLiteral("1.11"));
    QVERIFY(shows(QStringLiteral("A new version of Veltrix is available!")));
    QVERIFY(shows(QStringLiteral("Would you like to download Veltrix 1.11 now?")));
    QVERIFY(button(QStringLiteral("Update"))->isVisible());
    QVERIFY(!shows(QStringLiteral("VERSION")));
}

void tst_ZRBaseWindow::aDownloadBringsItsPanelAndShowsItsProgress()
{
    const auto labels = m_window->findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
        return label->text() == QLatin1String("Downloading 0%"); // as built, without a blank
    }));
    Q_EMIT m_updater->onDownloadStart();
    QVERIFY(shows(QStringLiteral("Downloading 0 %")));
    QVERIFY(button(QStringLiteral("Cancel"))->isVisible());
    Q_EMIT m_updater->onDownloading(0.42F);
    QVERIFY(shows(QStringLiteral("Downloading  42 %")));
    QCOMPARE(m_window->findChild<QProgressBar *>(QStringLiteral("downloadProgress"))->value(), 42);
}

void tst_ZRBaseWindow::progressIsAWholePercentage()
{
    auto *bar = m_window->findChild<QProgressBar *>(QStringLiteral("downloadProgress"));
    Q_EMIT m_updater->onDownloadStart();
    Q_EMIT m_updater->onDownloading(0.5F);
    Q_EMIT m_updater->onDownloading(std::numeric_limits<float>::quiet_NaN());
    QCOMPARE(bar->value(), 0);
    Q_EMIT m_updater->onDownloading(-1000.0F); // no length known
    QCOMPARE(bar->value(), 0);
    Q_EMIT m_updater->onDownloading(7.0F);
    QCOMPARE(bar->value(), 100);
}

void tst_ZRBaseWindow::anEndOfAnyKindBringsTheHeaderBack()
{
    const auto ends = {&ZRUpdater::onDownloadCanceled, &ZRUpdater::onDownloadInterrupted,
                       &ZRUpdater::onDownloadComplete};
    for (const auto end : ends) {
        Q_EMIT m_updater->onDownloadStart();
        QVERIFY(!shows(QStringLiteral("VERSION")));
        (m_updater.get()->*end)();
        QVERIFY(shows(QStringLiteral("VERSION")));
        QVERIFY(!shows(QStringLiteral("Downloading")));
    }
}

void tst_ZRBaseWindow::headerAndPanelsHaveTheirStyles()
{
    Q_EMIT m_updater->onUpdateAvailable(QStringLiteral("1.11"));
    QStringList labels;
    for (const QLabel *label : m_window->findChildren<QLabel *>()) {
        QVERIFY(label->text().isEmpty() || label->font().family() == QLatin1String("Source Sans Pro"));
        labels << label->text() + QLatin1Char('|') + label->styleSheet();
    }
    for (const auto *label : {
             "|background-image: url(:/icons/logo.png)",
             "VERSION 1.10|color:rgba(255,255,255,0.32)",
             "A new version of Veltrix is available!|QLabel{color: #ffffff;}",
             "Would you like to download Veltrix 1.11 now?|QLabel{color: rgba(255, 255, 255, 50%);}",
         }) {
        QVERIFY2(labels.contains(QLatin1String(label)), label);
    }
    QCOMPARE(
        button(QStringLiteral("Update"))->styleSheet(),
        QStringLiteral("QPushButton {background-color: #ff6767;border: 1px #5342d9;border-radius: 2px;"
                       "color: #ffffff;}QPushButton:focus:pressed {background-color: #FF4B4B;"
                       "border: 1px #FF4B4B;border-radius: 2px;color: #ffffff;}QPushButton:disabled "
                       "{background-color: #ff6760;border: 1px #ff6760;border-radius: 2px;color: #ffffff;}"
                       "QPushButton:hover {background-color: #FF4B4B;border: 1px #FF4B4B;"
                       "border-radius: 2px;color: #ffffff;}"));
    QCOMPARE(m_window->findChild<QProgressBar *>(QStringLiteral("downloadProgress"))->styleSheet(),
             QStringLiteral("QProgressBar#downloadProgress {border: 1px solid rgba(255, 255, 255, 10%);"
                            "border-radius: 1px;background-color: rgba(255, 255, 255, 20%);}"
                            "QProgressBar#downloadProgress::chunk {background-color: #FF4B4B;width: 2px;}"));
}

void tst_ZRBaseWindow::blurIsMadeOnFirstUseAndSwitched()
{
    QVERIFY(!m_window->graphicsEffect());
    m_window->setBlur(true);
    const auto *effect = qobject_cast<QGraphicsBlurEffect *>(m_window->graphicsEffect());
    QVERIFY(effect && effect->isEnabled());
    QCOMPARE(effect->blurRadius(), 3.0);
    m_window->setBlur(false);
    QVERIFY(!effect->isEnabled());
    m_window->setBlur(true);
    QCOMPARE(m_window->graphicsEffect(), effect);
}

void tst_ZRBaseWindow::severalPagesShowTheSameOffer()
{
    ZRBaseWindow other(m_updater.get());
    other.show();
    Q_EMIT m_updater->onUpdateAvailable(QStringLiteral("2"));
    int shown = 0;
    for (const QLabel *label : other.findChildren<QLabel *>()) {
        shown += label->isVisible() && label->text().contains(QLatin1String("Veltrix 2 now?")) ? 1 : 0;
    }
    QCOMPARE(shown, 1);
    QVERIFY(shows(QStringLiteral("Veltrix 2 now?")));
}

QTEST_MAIN(tst_ZRBaseWindow)
#include "tst_ZRBaseWindow.moc"
