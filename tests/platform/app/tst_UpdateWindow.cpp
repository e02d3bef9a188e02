#include "app/UpdateDialog.h"
#include "app/frame/AppFonts.h"
#include "app/frame/ZRBaseWindow.h"
#include "app/frame/ZRDialog.h"
#include "tests/platform/net/UpdaterRig.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>

/// What the user sees of an update: the updater, a web server, the window's frame and the real dialog. Leaves
/// a picture of each state in the folder "screenshots" of the build.
class tst_UpdateWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void lowIsOfferedInTheHeader();
    void downloadIsShownAndCancelled();
    void mandatoryDownloadShowsItsProgressWhereItWasOffered();
    void mandatoryDownloadFromNowhereStaysSilent();
    void offerStandsThroughAnswersThatOfferNothing();
    void midAsks();
    void midDeclinedIsOfferedInTheHeader();
    void highOrders();
    void mandatoryAsksToClose();
    void failureIsTold();
    void programThatCannotBeReplacedIsTold();
    void questionFollowsQuestionInOnePlace();
    void dialogThatIsGoneIsNotTheEnd();

private:
    void offer(const char *priority);
    ZRDialog *dialog() const;
    QString message() const;
    QStringList buttons(const QWidget *of) const;
    void press(QWidget *in, const char *text);
    bool shows(const char *text) const;
    void takePicture(QWidget *widget, const char *name);

    std::unique_ptr<UpdaterRig> m_rig;
    std::unique_ptr<UpdateDialog> m_prompt;
    std::unique_ptr<ZRBaseWindow> m_window;
};

void tst_UpdateWindow::initTestCase()
{
    AppFonts::load();
    QVERIFY(QDir().mkpath(QStringLiteral(SCREENSHOTS)));
}

void tst_UpdateWindow::init()
{
    m_window.reset();
    m_rig.reset();
    m_rig = std::make_unique<UpdaterRig>();
    m_rig->server.setAnswer("/installer", "#!/bin/sh\n");
    m_prompt = std::make_unique<UpdateDialog>();
    ZRUpdater::Setup setup = m_rig->setup();
    setup.prompt = m_prompt.get();
    m_rig->build(setup);
    m_window = std::make_unique<ZRBaseWindow>(m_rig->updater.get());
    m_window->setObjectName(QStringLiteral("window"));
    m_window->setAttribute(Qt::WA_StyledBackground);
    m_window->setStyleSheet(QStringLiteral("#window {background-color:#5342d9;}"));
    m_window->setFixedSize(900, 650);
    m_window->show();
    m_prompt->setWindow(m_window.get());
}

void tst_UpdateWindow::offer(const char *priority)
{
    m_rig->setOffer("1.11", priority, m_rig->server.url("/installer"));
    m_rig->check();
}

ZRDialog *tst_UpdateWindow::dialog() const
{
    ZRDialog *shown = nullptr;
    for (ZRDialog *each : m_window->findChildren<ZRDialog *>()) {
        if (each->isVisible()) {
            if (shown) {
                return nullptr; // never two
            }
            shown = each;
        }
    }
    return shown;
}

QString tst_UpdateWindow::message() const
{
    const ZRDialog *shown = dialog();
    return shown ? shown->findChild<QLabel *>(QStringLiteral("message"))->text() : QString();
}

QStringList tst_UpdateWindow::buttons(const QWidget *of) const
{
    QStringList texts;
    for (const QPushButton *button : of->findChildren<QPushButton *>()) {
        texts.append(button->text());
    }
    return texts;
}

void tst_UpdateWindow::press(QWidget *in, const char *text)
{
    for (QPushButton *button : in->findChildren<QPushButton *>()) {
        if (button->isVisible() && button->text() == QLatin1String(text)) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    QFAIL(text);
}

bool tst_UpdateWindow::shows(const char *text) const
{
    const auto labels = m_window->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(), [text](const QLabel *label) {
        return label->isVisible() && label->text() == QLatin1String(text);
    });
}

// Also looks whether every text has the room that it needs.
void tst_UpdateWindow::takePicture(QWidget *widget, const char *name)
{
    for (const QLabel *label : widget->findChildren<QLabel *>()) {
        if (!label->isVisible() || label->text().isEmpty()) {
            continue;
        }
        const int margin = label->margin();
        const QRect room = label->contentsRect().adjusted(margin, margin, -margin, -margin);
        const QRect text = label->fontMetrics().boundingRect(
            0, 0, room.width(), 1000, label->wordWrap() ? Qt::TextWordWrap : 0, label->text());
        const bool isMarkup = label->textFormat() == Qt::RichText;
        QVERIFY2(isMarkup || text.width() <= room.width(), qPrintable(label->text()));
        QVERIFY2(isMarkup || text.height() <= room.height(), qPrintable(label->text()));
    }
    const QString file = QStringLiteral(SCREENSHOTS "/update-%1-%2x.png")
                             .arg(QLatin1String(name))
                             .arg(qRound(widget->devicePixelRatioF()));
    QVERIFY(widget->grab().save(file));
}

void tst_UpdateWindow::lowIsOfferedInTheHeader()
{
    offer("LOW");
    QVERIFY(!dialog());
    QVERIFY(shows("A new version of Veltrix is available!"));
    QVERIFY(shows("Would you like to download Veltrix 1.11 now?"));
    takePicture(m_window.get(), "offered");
    press(m_window.get(), "Update");
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QVERIFY(shows("VERSION 1.10"));
}

void tst_UpdateWindow::downloadIsShownAndCancelled()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.stallAt = 420;
    answer.pieceSize = 70;
    answer.pause = 150; // progress is reported each 100 ms at most
    m_rig->server.setAnswer("/installer", answer);
    offer("LOW");
    press(m_window.get(), "Update");
    QVERIFY(shows("Downloading 0 %"));
    QTRY_VERIFY(shows("Downloading  42 %"));
    QCOMPARE(m_window->findChild<QProgressBar *>()->value(), 42);
    takePicture(m_window.get(), "downloading");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("canceled")));
    press(m_window.get(), "Cancel");
    QVERIFY(m_rig->waitFor(QStringLiteral("canceled")));
    QVERIFY(shows("VERSION 1.10"));
    QVERIFY(!dialog());
    takePicture(m_window.get(), "none");
}

void tst_UpdateWindow::mandatoryDownloadShowsItsProgressWhereItWasOffered()
{
    offer("LOW");
    QVERIFY(shows("Would you like to download Veltrix 1.11 now?"));
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.pieceSize = 70;
    answer.pause = 150;
    m_rig->server.setAnswer("/installer", answer);
    offer("MAN");
    QTRY_VERIFY(shows("Downloading  42 %"));
    QVERIFY(!shows("A new version of Veltrix is available!"));
    QTRY_VERIFY_WITH_TIMEOUT(dialog(), 10000);
    QVERIFY(shows("VERSION 1.10"));
}

void tst_UpdateWindow::mandatoryDownloadFromNowhereStaysSilent()
{
    HttpAnswer answer;
    answer.generatedSize = 1000;
    answer.pieceSize = 250;
    answer.pause = 150;
    m_rig->server.setAnswer("/installer", answer);
    offer("MAN");
    QTRY_VERIFY(m_rig->progressReports > 1);
    QVERIFY(shows("VERSION 1.10"));
    QTRY_VERIFY(dialog());
    QVERIFY(shows("VERSION 1.10"));
}

void tst_UpdateWindow::offerStandsThroughAnswersThatOfferNothing()
{
    offer("LOW");
    m_rig->setAnswer("<html>Sign in</html>");
    m_rig->check();
    QVERIFY(shows("Would you like to download Veltrix 1.11 now?"));
    press(m_window.get(), "Update");
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
}

void tst_UpdateWindow::midAsks()
{
    offer("MID");
    QVERIFY(dialog());
    QCOMPARE(message(), QStringLiteral("A new version of Veltrix is available. Do you want to install it?"));
    QCOMPARE(buttons(dialog()), (QStringList{QStringLiteral("OK"), QStringLiteral("Cancel")}));
    takePicture(dialog(), "mid");
    offer("MID");
    press(dialog(), "OK");
    QVERIFY(!dialog());
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
}

void tst_UpdateWindow::midDeclinedIsOfferedInTheHeader()
{
    offer("MID");
    press(dialog(), "Cancel");
    QVERIFY(!dialog());
    QVERIFY(shows("Would you like to download Veltrix 1.11 now?"));
    QCOMPARE(m_rig->server.requestCount("/installer"), 0);
}

void tst_UpdateWindow::highOrders()
{
    offer("HIGH");
    QCOMPARE(message(), QStringLiteral("A new version of Veltrix is available. Press OK to install it"));
    QCOMPARE(buttons(dialog()), QStringList{QStringLiteral("OK")});
    takePicture(dialog(), "high");
    press(dialog(), "OK");
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
}

void tst_UpdateWindow::mandatoryAsksToClose()
{
    offer("MAN");
    QTRY_COMPARE(message(),
                 QStringLiteral("Please press OK to close Veltrix and complete the update process."));
    QCOMPARE(buttons(dialog()), QStringList{QStringLiteral("OK")});
    takePicture(dialog(), "mandatory");
    press(dialog(), "OK");
    QCOMPARE(m_rig->quits, 1);
}

void tst_UpdateWindow::failureIsTold()
{
    m_rig->setOffer("1.11", "LOW", m_rig->server.url("/missing"));
    m_rig->check();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("server replied")));
    press(m_window.get(), "Update");
    QTRY_COMPARE(message(), QStringLiteral("An error occurred during download."));
    QCOMPARE(buttons(dialog()), QStringList{QStringLiteral("OK")});
    QVERIFY(shows("VERSION 1.10"));
    takePicture(dialog(), "failed");
    press(dialog(), "OK");
    QVERIFY(!dialog());
    QCOMPARE(m_rig->quits, 0);
}

void tst_UpdateWindow::programThatCannotBeReplacedIsTold()
{
    ZRUpdater::Setup setup = m_rig->setup();
    setup.prompt = m_prompt.get();
    setup.system = OSHelper::System::Linux;
    setup.application = QStringLiteral("/proc/self/exe"); // a folder that not even root may write into
    m_window.reset();
    m_rig->build(setup);
    m_window = std::make_unique<ZRBaseWindow>(m_rig->updater.get());
    m_window->show();
    m_prompt->setWindow(m_window.get());
    connect(m_rig->updater.get(), &ZRUpdater::onDownloadComplete, m_rig->updater.get(), &ZRUpdater::install);
    offer("LOW");
    press(m_window.get(), "Update");
    QTRY_VERIFY(message().contains(m_rig->installer()));
    QCOMPARE(buttons(dialog()), QStringList{QStringLiteral("OK")});
    takePicture(dialog(), "not-allowed");
    press(dialog(), "OK");
    QCOMPARE(m_rig->quits, 0);
}

void tst_UpdateWindow::questionFollowsQuestionInOnePlace()
{
    offer("MID");
    offer("HIGH");
    QVERIFY(dialog());
    QVERIFY(message().endsWith(QLatin1String("Press OK to install it")));
    press(dialog(), "OK");
    QVERIFY(m_rig->waitFor(QStringLiteral("complete")));
    QCOMPARE(m_rig->server.requestCount("/installer"), 1);
}

void tst_UpdateWindow::dialogThatIsGoneIsNotTheEnd()
{
    offer("MID");
    delete dialog();
    QVERIFY(!m_prompt->isVisible());
    offer("MID");
    QVERIFY(dialog());
    m_window.reset(); // and the dialog with it
    QVERIFY(!m_prompt->isVisible());
    offer("HIGH"); // now without a window to lie over
    QVERIFY(m_prompt->isVisible());
}

QTEST_MAIN(tst_UpdateWindow)
#include "tst_UpdateWindow.moc"
