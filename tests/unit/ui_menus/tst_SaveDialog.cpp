#include "app/frame/AppFonts.h"
#include "app/frame/ClickableLabel.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "ui/SaveDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace
{

const QString okAtRest = QStringLiteral("background-image: url(:/buttons/ok_0.png);");
const QString okPressed = QStringLiteral("background-image: url(:/buttons/ok_1.png);");
const QString cancelAtRest = QStringLiteral("background-image: url(:/buttons/cancel_0.png);");
const QString cancelPressed = QStringLiteral("background-image: url(:/buttons/cancel_1.png);");

} // namespace

class tst_SaveDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { AppFonts::load(); }
    void init();
    void cleanup();

    void textsFontsAndStylesAreInPlace();
    void everyShowStartsWithUntitledSelectedAndTheBlur();
    void okSavesTheName();
    void theNameIsTakenAsItStands_data();
    void theNameIsTakenAsItStands();
    void aFailureIsSaidAndTheDialogStays();
    void whatANameLeadsToIsSaidBefore();
    void cancelSavesNothing();
    void aClickElsewhereKeepsItOpen();
    void pressedPicturesAreRestoredByTheRelease();
    void theKeyboardIsEnough();
    void theMouseIsHeldWhileItIsShownOnly();

private:
    QPoint on(const QWidget *button) const { return button->mapTo(m_dialog, button->rect().center()); }

    std::unique_ptr<QWidget> m_page;
    SaveDialog *m_dialog = nullptr;
    QLineEdit *m_name = nullptr;
    ClickableLabel *m_ok = nullptr;
    ClickableLabel *m_cancel = nullptr;
};

void tst_SaveDialog::init()
{
    m_page = std::make_unique<QWidget>();
    m_page->resize(900, 650);
    m_page->setStyleSheet(QStringLiteral("background-color:#5342d9"));
    m_page->show();
    m_dialog = new SaveDialog(m_page.get());
    m_name = m_dialog->findChild<QLineEdit *>();
    const QList<ClickableLabel *> buttons = m_dialog->findChildren<ClickableLabel *>();
    for (ClickableLabel *button : buttons) {
        (button->styleSheet() == okAtRest ? m_ok : m_cancel) = button;
    }
    QVERIFY(m_name && m_ok && m_cancel);
}

void tst_SaveDialog::cleanup()
{
    m_page.reset();
}

void tst_SaveDialog::textsFontsAndStylesAreInPlace()
{
    QCOMPARE(m_dialog->minimumSize(), QSize(900, 650));
    QCOMPARE(m_dialog->maximumSize(), QSize(900, 650));
    QVERIFY(m_dialog->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Save Mapping"));
    QVERIFY(m_dialog->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(m_dialog->testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(!m_dialog->isVisible());

    QStringList captions;
    const QList<QLabel *> labels = m_dialog->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->text().isEmpty()) {
            continue;
        }
        captions.append(label->text());
        QCOMPARE(label->styleSheet(), QStringLiteral("QLabel { color :#414141;}"));
        QCOMPARE(label->font().family(), QStringLiteral("Source Sans Pro ExtraLight"));
        QCOMPARE(label->font().pointSize(), 12);
        QCOMPARE(label->font().weight(), label->text() == QLatin1String("Save Mapping") ? 75 : 50);
    }
    QCOMPARE(captions, (QStringList{QStringLiteral("Save Mapping"), QStringLiteral("Save as:")}));

    QCOMPARE(m_name->placeholderText(), QStringLiteral("type a name"));
    QCOMPARE(m_name->styleSheet(), QStringLiteral("QLabel { color : black;  background-color:white}"));
    QCOMPARE(m_name->font().family(), QStringLiteral("Source Sans Pro ExtraLight"));
    QCOMPARE(m_name->font().pointSize(), 16);
    QCOMPARE(m_name->font().weight(), 50);
    QCOMPARE(m_ok->styleSheet(), okAtRest);
    QCOMPARE(m_cancel->styleSheet(), cancelAtRest);
    for (const QWidget *widget : QList<QWidget *>{m_dialog, m_name, m_ok, m_cancel}) {
        QVERIFY(!widget->accessibleName().isEmpty());
    }
    // The page's ground must not shine through: black on violet cannot be read.
    m_dialog->show();
    const QImage field = m_name->grab().toImage();
    QCOMPARE(field.pixelColor(field.width() - 8, field.height() / 2), QColor(Qt::white));
}

void tst_SaveDialog::everyShowStartsWithUntitledSelectedAndTheBlur()
{
    QSignalSpy blur(m_dialog, &SaveDialog::setBlur);
    for (int i = 1; i <= 2; ++i) {
        m_dialog->show();
        QCOMPARE(m_name->text(), QStringLiteral("Untitled"));
        QCOMPARE(m_name->selectedText(), QStringLiteral("Untitled"));
        QCOMPARE(blur.size(), i);
        m_name->setText(QStringLiteral("something else"));
        m_dialog->hide();
    }
    for (const QVariantList &arguments : qAsConst(blur)) {
        QCOMPARE(arguments.at(0).toBool(), true); // never false: that is the page's business
    }
}

void tst_SaveDialog::okSavesTheName()
{
    QSignalSpy saved(m_dialog, &SaveDialog::saveCurrentMap);
    m_dialog->show();
    LogCapture log;
    QTest::mousePress(m_dialog, Qt::LeftButton, {}, on(m_ok));
    QCOMPARE(m_ok->styleSheet(), okPressed);
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.at(0).at(0).toString(), QStringLiteral("Untitled"));
    QVERIFY(log.takeLines().contains(QStringLiteral("info: saved Map: Untitled")));
    QVERIFY(!m_dialog->isVisible());
}

void tst_SaveDialog::theNameIsTakenAsItStands_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << QStringLiteral("  two  ");
    QTest::newRow("mark-up") << QStringLiteral("<b>&amp;\"");
}

void tst_SaveDialog::theNameIsTakenAsItStands()
{
    QFETCH(QString, name);
    QSignalSpy saved(m_dialog, &SaveDialog::saveCurrentMap);
    m_dialog->show();
    m_name->setText(name);
    QTest::mousePress(m_dialog, Qt::LeftButton, {}, on(m_ok));
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.at(0).at(0).toString(), name);
}

void tst_SaveDialog::aFailureIsSaidAndTheDialogStays()
{
    const auto *line = m_dialog->findChild<QLabel *>(QStringLiteral("failure"));
    bool fails = true;
    connect(m_dialog, &SaveDialog::saveCurrentMap, this, [&] {
        if (fails) {
            m_dialog->showFailure(QStringLiteral("the disk is full"));
        }
    });
    m_dialog->show();
    QVERIFY(line->isHidden());
    m_name->setText(QStringLiteral("mine"));
    LogCapture log;
    for (int times = 0; times < 2; ++times) {
        QTest::mousePress(m_dialog, Qt::LeftButton, Qt::NoModifier, on(m_ok));
        QVERIFY(m_dialog->isVisible());
        QVERIFY(line->isVisible());
        QCOMPARE(line->text(), QStringLiteral("Not saved: the disk is full"));
        QCOMPARE(m_name->text(), QStringLiteral("mine"));
        QCOMPARE(m_ok->styleSheet(), okAtRest);
        QVERIFY(m_ok->parentWidget()->rect().contains(m_ok->geometry()));
        QVERIFY(!line->geometry().intersects(m_ok->geometry()) &&
                !line->geometry().intersects(m_name->geometry()));
    }
    QCOMPARE(log.takeLines().filter(QStringLiteral("saved Map")), QStringList());
    fails = false;
    QTest::mousePress(m_dialog, Qt::LeftButton, Qt::NoModifier, on(m_ok));
    QVERIFY(m_dialog->isHidden());
    m_dialog->show();
    QVERIFY(line->isHidden());
}

void tst_SaveDialog::whatANameLeadsToIsSaidBefore()
{
    m_dialog->setListed([](const QString &name) { return name == QLatin1String("Mix"); });
    const auto *line = m_dialog->findChild<QLabel *>(QStringLiteral("failure"));
    m_dialog->show();
    QVERIFY(line->isHidden());
    const QRect place = m_ok->geometry();
    QTest::keyClicks(m_name, QStringLiteral("Mi")); // over what is selected
    QVERIFY(line->isHidden());
    QTest::keyClicks(m_name, QStringLiteral("x"));
    QVERIFY(line->isVisible());
    QCOMPARE(line->text(), QStringLiteral("This name is taken: both will be listed."));
    QCOMPARE(m_name->accessibleDescription(), line->text());
    QCOMPARE(m_ok->geometry(), place); // nothing moves under the pointer
    QVERIFY(!line->geometry().intersects(m_ok->geometry()) &&
            !line->geometry().intersects(m_name->geometry()));
    QTest::keyClick(m_name, Qt::Key_Backspace);
    QVERIFY(line->isHidden());
    QVERIFY(m_name->accessibleDescription().isEmpty());
    m_name->clear();
    QCOMPARE(line->text(), QStringLiteral("It will be listed as 'Unknown'."));

    // It is said and no more: what is written stays as it stands.
    QSignalSpy saved(m_dialog, &SaveDialog::saveCurrentMap);
    QTest::keyClick(m_name, Qt::Key_Return);
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.at(0).at(0).toString(), QString());
    QVERIFY(m_dialog->isHidden());
    m_dialog->setListed([](const QString &name) { return name == QLatin1String("Untitled"); });
    m_dialog->show(); // a name that is taken from the start
    QVERIFY(line->isVisible());
}

void tst_SaveDialog::cancelSavesNothing()
{
    QSignalSpy saved(m_dialog, &SaveDialog::saveCurrentMap);
    m_dialog->show();
    QTest::mousePress(m_dialog, Qt::LeftButton, {}, on(m_cancel));
    QCOMPARE(m_cancel->styleSheet(), cancelPressed);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(saved.size(), 0);
    m_dialog->show();
    QCOMPARE(m_cancel->styleSheet(), cancelAtRest);
}

void tst_SaveDialog::aClickElsewhereKeepsItOpen()
{
    QSignalSpy saved(m_dialog, &SaveDialog::saveCurrentMap);
    m_dialog->show();
    const QPoint places[] = {{5, 5}, on(m_name), on(m_ok) - QPoint(60, 0), {450, 640}};
    for (const QPoint &place : places) {
        QTest::mouseClick(m_dialog, Qt::LeftButton, {}, place);
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(m_ok->styleSheet(), okAtRest);
    }
    QCOMPARE(saved.size(), 0);
}

void tst_SaveDialog::pressedPicturesAreRestoredByTheRelease()
{
    m_dialog->show();
    QTest::mousePress(m_dialog, Qt::LeftButton, {}, on(m_ok));
    QTest::mouseRelease(m_dialog, Qt::LeftButton, {}, on(m_ok));
    QCOMPARE(m_ok->styleSheet(), okAtRest);
    m_dialog->show();
    QTest::mousePress(m_dialog, Qt::LeftButton, {}, on(m_cancel));
    QTest::mouseRelease(m_dialog, Qt::LeftButton, {}, on(m_cancel));
    QCOMPARE(m_cancel->styleSheet(), cancelAtRest);
}

void tst_SaveDialog::theKeyboardIsEnough()
{
    QSignalSpy saved(m_dialog, &SaveDialog::saveCurrentMap);
    m_dialog->show();
    QTest::keyClicks(m_name, QStringLiteral("mine")); // replaces the selected text
    QTest::keyClick(m_name, Qt::Key_Return);
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.at(0).at(0).toString(), QStringLiteral("mine"));
    QVERIFY(!m_dialog->isVisible());

    m_dialog->show();
    QTest::keyClick(m_name, Qt::Key_Escape);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(saved.size(), 1);

    m_dialog->show();
    QTest::keyClick(m_ok, Qt::Key_Space);
    QCOMPARE(saved.size(), 2);
    m_dialog->show();
    QTest::keyClick(m_cancel, Qt::Key_Space);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(saved.size(), 2);
}

void tst_SaveDialog::theMouseIsHeldWhileItIsShownOnly()
{
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog));
    QTRY_COMPARE(QWidget::mouseGrabber(), m_dialog);
    QTest::mousePress(m_dialog, Qt::LeftButton, {}, on(m_cancel));
    QCOMPARE(QWidget::mouseGrabber(), nullptr);
}

QTEST_MAIN(tst_SaveDialog)
#include "tst_SaveDialog.moc"
