#include "app/frame/AppFonts.h"
#include "app/frame/ClickableLabel.h"
#include "tests/support/main/Main.h"
#include "tests/unit/app/PageInWindow.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/ProgramChoice.h"

#include <QApplication>
#include <QCheckBox>
#include <QGraphicsEffect>
#include <QSlider>
#include <QTest>

/// The device page without a mouse.
class tst_PageByKeyboard : public QObject, private PageInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { end(); }
    void tabFollowsThePage();
    void keysAloneWorkThePage();
#ifdef Q_OS_UNIX
    void printerButtonIsDimmedWhileItsDialogIsOpen();
#endif
};

void tst_PageByKeyboard::init()
{
    begin();
    makePage();
    QApplication::setActiveWindow(m_window.get());
}

void tst_PageByKeyboard::tabFollowsThePage()
{
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true); // shows the line about what is not kept
    auto *printer = m_page->findChild<ClickableLabel *>(QString(), Qt::FindDirectChildrenOnly);
    printer->setFocus(Qt::TabFocusReason);
    QList<QWidget *> expected{printer, m_page->findChild<ComboMapping *>(),
                              m_page->findChild<ClickableLabel *>(QStringLiteral("keep")),
                              m_page->findChild<ProgramChoice *>()};
    for (int control = 0; control < 10; ++control) {
        expected << menu(control);
    }
    const auto sliders = m_page->findChildren<QSlider *>();
    expected << sliders.at(0) << sliders.at(1)
             << m_page->findChild<QCheckBox *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *each : expected) {
        QCOMPARE(QApplication::focusWidget(), each);
        QTest::keyClick(each, Qt::Key_Tab);
    }
}

void tst_PageByKeyboard::keysAloneWorkThePage()
{
    auto *slider = m_page->findChildren<QSlider *>().at(0);
    slider->setFocus();
    slider->setValue(50);
    QTest::keyClick(slider, Qt::Key_Right); // to the right, where "Fast" stands
    QVERIFY(slider->value() < 50);
    QTest::keyClick(slider, Qt::Key_Left);
    QTest::keyClick(slider, Qt::Key_Left);
    QVERIFY(slider->value() > 50);

    auto *box = m_page->findChild<QCheckBox *>(QString(), Qt::FindDirectChildrenOnly);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Space);
    QVERIFY(m_rig->autostart.exists());

    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    auto *keep = m_page->findChild<ClickableLabel *>(QStringLiteral("keep"));
    keep->setFocus(Qt::TabFocusReason);
    QTest::keyClick(keep, Qt::Key_Return);
    QVERIFY(keep->isHidden());
    QVERIFY(QFile::exists(m_rig->data.filePath(QStringLiteral("current.xml"))));
}

#ifdef Q_OS_UNIX // elsewhere the dialog is the system's
void tst_PageByKeyboard::printerButtonIsDimmedWhileItsDialogIsOpen()
{
    auto *printer = m_page->findChild<ClickableLabel *>(QString(), Qt::FindDirectChildrenOnly);
    bool dimmed = false;
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        dimmed = printer->graphicsEffect()->isEnabled();
        dialog->close();
    });
    QTest::keyClick(printer, Qt::Key_Space);
    QVERIFY(dimmed);
    QVERIFY(!printer->graphicsEffect()->isEnabled());
}
#endif

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_PageByKeyboard test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_PageByKeyboard.moc"
