#include "mapping/ImportedMappings.h"
#include "mapping/MappingSession.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/support/mapping/MappingSamples.h"
#include "tests/unit/app/PageInWindow.h"
#include "ui/ComboMapping.h"
#include "ui/ComboMenu.h"
#include "ui/OverlayDialog.h"
#include "ui/ProgramChoice.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>

/// The device page, a mapping per program, and programs that get the focus when the test says so.
class tst_ProgramsOnPage : public QObject, private PageInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void itIsOffUntilItIsUsed();
    void theMenuGivesAndTakes();
    void theKeyboardGivesAndTakes();
    void thePageShowsTheMappingThatActs();
    void programsLeaveTheSettingsAlone();
    void anOpenDialogHasTheChangeWait();
    void anOpenMenuHasTheChangeWait();
    void exportingHasTheChangeWait();
    void importingHasTheChangeWait();
    void printingHasTheChangeWait();
    void whatCannotBeKeptIsSaid();
    void aBrokenFileIsSaid();
    void undoIsNotOfferedForAnotherProgramsMapping();
    void withoutASessionThatTellsNothingIsOffered();

private:
    void show();
    /// Opens the menu and chooses its entry @p number by keyboard.
    void choose(int number, QStringList *texts = nullptr);
    ProgramChoice *choice() const { return m_page->findChild<ProgramChoice *>(); }
    QString line() const { return choice()->findChild<QLabel *>()->text(); }
    QString failure() const
    {
        auto *label = m_page->findChild<QLabel *>(QStringLiteral("failure"));
        return label->isVisible() ? label->text() : QString();
    }
    qint32 inUse(int control = 3) const { return m_rig->mappings.action(control, Layer::Normal).key1; }
    /// Its control 3 presses G; the mapping of all others, whose control 3 presses A, is in use again then.
    void giveGimpItsOwn();
    /// Gimp gets the focus while the dialog that @p open opens is open, and has its mapping when that is
    /// closed.
    void theChangeWaitsForTheDialogOf(const std::function<void()> &open);
};

void tst_ProgramsOnPage::show()
{
    makePage();
    m_rig->mappings.assign(3, Layer::Normal, key(65, "A"));
}

void tst_ProgramsOnPage::giveGimpItsOwn()
{
    m_rig->focus.focus(QStringLiteral("Gimp"));
    choose(1);
    m_rig->mappings.assign(3, Layer::Normal, key(71, "G"));
    m_rig->focus.focus(QStringLiteral("firefox"));
    QCOMPARE(inUse(), 65);
}

void tst_ProgramsOnPage::choose(int number, QStringList *texts)
{
    QTimer::singleShot(0, this, [number, texts] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (const QAction *action : menu->actions()) {
            if (texts) {
                *texts << (action->isChecked() ? QStringLiteral("* ") : QString()) + action->text() +
                              (action->isEnabled() ? QString() : QStringLiteral(" -"));
            }
        }
        for (int i = 0; i <= number; ++i) {
            QTest::keyClick(menu, Qt::Key_Down);
        }
        QTest::keyClick(menu, number < 0 ? Qt::Key_Escape : Qt::Key_Return);
    });
    QTest::mouseClick(choice(), Qt::LeftButton);
}

void tst_ProgramsOnPage::itIsOffUntilItIsUsed()
{
    m_rig->focus.focus(QStringLiteral("Gimp-2.10"));
    show();
    QVERIFY(choice());
    QVERIFY(choice()->isVisible());
    QCOMPARE(line(), QStringLiteral("For all programs"));
    QCOMPARE(choice()->accessibleName(), QStringLiteral("For all programs"));
    QVERIFY(m_rig->focus.isWatched());
    m_page->hide();
    QVERIFY(!m_rig->focus.isWatched());
    QVERIFY(!QFile::exists(m_rig->mappings.files().programs()));
}

void tst_ProgramsOnPage::theMenuGivesAndTakes()
{
    show();
    QStringList texts;
    choose(-1, &texts);
    QCOMPARE(texts, (QStringList{QStringLiteral("* For all programs"),
                                 QStringLiteral("Only for the program used last -")}));
    m_rig->focus.focus(QStringLiteral("R&D-2"));
    choose(1);
    QCOMPARE(line(), QStringLiteral("Only for R&D"));
    QCOMPARE(m_rig->programMappings.inUse(), QStringLiteral("r&d"));
    texts.clear();
    choose(1, &texts); // what is so already
    QCOMPARE(texts, (QStringList{QStringLiteral("For all programs"), QStringLiteral("* Only for R&&D")}));
    QCOMPARE(line(), QStringLiteral("Only for R&D"));
    choose(0);
    QCOMPARE(line(), QStringLiteral("For all programs"));
    QVERIFY(!m_rig->programMappings.areUsed());
}

void tst_ProgramsOnPage::theKeyboardGivesAndTakes()
{
    m_rig->focus.focus(QStringLiteral("Gimp"));
    show();
    choice()->setFocus();
    QTimer::singleShot(0, this, [] {
        QWidget *menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        QTest::keyClick(menu, Qt::Key_Up);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::keyClick(choice(), Qt::Key_Space);
    QCOMPARE(line(), QStringLiteral("Only for Gimp"));
}

void tst_ProgramsOnPage::thePageShowsTheMappingThatActs()
{
    m_rig->focus.focus(QStringLiteral("Gimp"));
    show();
    choose(1);
    m_rig->mappings.assign(3, Layer::Normal, key(71, "G"));
    m_rig->focus.focus(QStringLiteral("firefox"));
    QCOMPARE(line(), QStringLiteral("For all programs"));
    QVERIFY(menu(3)->inWords(Layer::Normal).contains(QStringLiteral("A")));
    choose(1);
    m_rig->mappings.assign(3, Layer::Normal, key(70, "F"));
    m_rig->focus.focus(QStringLiteral("Gimp"));
    QCOMPARE(line(), QStringLiteral("Only for Gimp"));
    QVERIFY(menu(3)->inWords(Layer::Normal).contains(QStringLiteral("G")));
    m_page->hide();
    m_rig->focus.focus(QStringLiteral("firefox"));
    QCOMPARE(inUse(), 70);
}

void tst_ProgramsOnPage::programsLeaveTheSettingsAlone()
{
    m_rig->focus.focus(QStringLiteral("Gimp"));
    show();
    menu(3)->getShorcut(0, key(66, "B"));
    m_rig->store.sync();
    const auto stored = [this] {
        m_rig->store.sync();
        QMap<QString, QVariant> values;
        for (const QString &key : m_rig->store.allKeys()) {
            values[key] = m_rig->store.value(key);
        }
        return values;
    };
    const auto before = stored();
    choose(1);
    menu(3)->getShorcut(0, key(71, "G"));
    QCOMPARE(inUse(), 71);
    m_rig->focus.focus(QStringLiteral("firefox"));
    QCOMPARE(stored(), before);
    QCOMPARE(inUse(), 66);
    menu(3)->getShorcut(0, key(67, "C"));
    QVERIFY(stored() != before);
}

void tst_ProgramsOnPage::anOpenDialogHasTheChangeWait()
{
    m_rig->focus.focus(QStringLiteral("Gimp"));
    show();
    choose(1);
    OverlayDialog *dialog = nullptr;
    {
        // The dialog of control 3, which the user opens and leaves open.
        QTimer::singleShot(0, this, [] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Right);
            QWidget *layer = QApplication::activePopupWidget();
            QTest::keyClick(layer, Qt::Key_Return);
        });
        menu(3)->dislayMenu();
        for (OverlayDialog *each : m_page->findChildren<OverlayDialog *>()) {
            dialog = each->isVisible() ? each : dialog;
        }
    }
    QVERIFY(dialog);
    m_rig->focus.focus(QStringLiteral("firefox"));
    QCOMPARE(line(), QStringLiteral("Only for Gimp"));
    dialog->hide();
    menu(3)->getShorcut(0, key(71, "G")); // what it says, it says before control returns
    QTRY_COMPARE(line(), QStringLiteral("For all programs"));
    QCOMPARE(inUse(), 65);
    m_rig->focus.focus(QStringLiteral("Gimp"));
    QCOMPARE(inUse(), 71);
}

void tst_ProgramsOnPage::anOpenMenuHasTheChangeWait()
{
    m_rig->focus.focus(QStringLiteral("Gimp"));
    show();
    choose(1);
    m_rig->focus.focus(QStringLiteral("editor"));
    QTimer::singleShot(0, this, [this] {
        QVERIFY(QApplication::activePopupWidget());
        m_rig->focus.focus(QStringLiteral("Gimp"));
        QCOMPARE(line(), QStringLiteral("For all programs"));
        QApplication::activePopupWidget()->close();
    });
    menu(3)->dislayMenu();
    QCOMPARE(line(), QStringLiteral("Only for Gimp"));
}

void tst_ProgramsOnPage::exportingHasTheChangeWait()
{
    show();
    auto *selector = m_page->findChild<ComboMapping *>();
    giveGimpItsOwn();
    m_rig->mappings.use(ZRButtonMap(QStringLiteral("Work")));
    m_rig->mappings.assign(3, Layer::Normal, key(87, "W"));
    const QString path = m_rig->data.filePath(QStringLiteral("out.xml"));

    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(10, 10), selector->mapToGlobal({10, 10}));
    QCoreApplication::sendEvent(selector, &request);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    m_rig->focus.focus(QStringLiteral("Gimp"));
    QCOMPARE(inUse(), 87);
    QString title;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        title = dialog->windowTitle();
        QCoreApplication::processEvents(); // the menu has gone
        m_rig->focus.focus(QStringLiteral("firefox"));
        m_rig->focus.focus(QStringLiteral("Gimp"));
        QCOMPARE(inUse(), 87);
        m_rig->mappings.use(ZRButtonMap(QStringLiteral("Other"))); // by remote control, say
        dialog->findChild<QLineEdit *>()->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QVERIFY2(title.contains(QStringLiteral("Work")), qPrintable(title));
    const ImportedMappings read(path);
    QCOMPARE(read.fault(), QString());
    QCOMPARE(read.maps().front()->name, QStringLiteral("Work"));
    QCOMPARE(read.maps().front()->actions[3][Layer::Normal].key1, 87);
    QTRY_COMPARE(line(), QStringLiteral("Only for Gimp"));
    QCOMPARE(inUse(), 71);
}

void tst_ProgramsOnPage::theChangeWaitsForTheDialogOf(const std::function<void()> &open)
{
    bool asked = false;
    QTimer::singleShot(0, this, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        m_rig->focus.focus(QStringLiteral("Gimp"));
        QCOMPARE(inUse(), 65);
        asked = true;
        dialog->close();
    });
    open();
    QVERIFY(asked);
    QTRY_COMPARE(inUse(), 71);
}

void tst_ProgramsOnPage::importingHasTheChangeWait()
{
    show();
    giveGimpItsOwn();
    theChangeWaitsForTheDialogOf([this] { m_page->findChild<ComboMapping *>()->actions().at(1)->trigger(); });
}

void tst_ProgramsOnPage::printingHasTheChangeWait()
{
    show();
    giveGimpItsOwn();
    theChangeWaitsForTheDialogOf([this] { m_page->printCurrentView(); });
}

void tst_ProgramsOnPage::whatCannotBeKeptIsSaid()
{
    const LogCapture log;
    m_rig->focus.focus(QStringLiteral("Gimp"));
    show();
    QVERIFY(QDir().mkdir(m_rig->mappings.files().programs()));
    choose(1);
    QCOMPARE(line(), QStringLiteral("Only for Gimp"));
    QVERIFY(failure().contains(QStringLiteral("not a regular file")));
    QVERIFY(QDir().rmdir(m_rig->mappings.files().programs()));
    m_rig->mappings.assign(3, Layer::Normal, key(71, "G"));
    QCOMPARE(failure(), QString());
}

void tst_ProgramsOnPage::aBrokenFileIsSaid()
{
    const LogCapture log;
    m_rig->writeFile(QStringLiteral("programs.xml"), "<ZR><MAPPING");
    show();
    QVERIFY(failure().contains(QStringLiteral("programs")));
    QCOMPARE(m_rig->readFile(QStringLiteral("programs.xml.broken")), QByteArray("<ZR><MAPPING"));
}

void tst_ProgramsOnPage::undoIsNotOfferedForAnotherProgramsMapping()
{
    m_rig->focus.focus(QStringLiteral("Gimp"));
    show();
    choose(1);
    const ZRButtonMap mix(QStringLiteral("Mix"));
    m_rig->mappings.use(mix);
    auto *undo = m_page->findChild<QWidget *>(QStringLiteral("undo"));
    QVERIFY(undo->isVisible());
    m_rig->focus.focus(QStringLiteral("firefox"));
    QVERIFY(!undo->isVisible());
    m_rig->focus.focus(QStringLiteral("Gimp"));
    QVERIFY(m_rig->mappings.takeBack());
    QCOMPARE(inUse(), 65);
}

void tst_ProgramsOnPage::withoutASessionThatTellsNothingIsOffered()
{
    FocusedProgram silent;
    ProgramSwitch programs(silent, *m_rig->engine.dispatcher, m_rig->programMappings);
    m_page = new DeviceZR(m_window.get(), m_serial.get(),
                          {&m_rig->mappings, m_rig->engine.dispatcher.get(), &m_rig->store,
                           &m_rig->engine.settings, &m_rig->launchOnStartup, &m_rig->mapUpdate, nullptr,
                           &m_rig->desktop, QString(), QString(), &m_rig->programMappings, &programs});
    m_window->show();
    QVERIFY(!choice());
    m_window.reset(); // before what it works with
}

QTEST_MAIN(tst_ProgramsOnPage)
#include "tst_ProgramsOnPage.moc"
