#include "app/frame/AppFonts.h"
#include "app/frame/ClickableLabel.h"
#include "mapping/XmlMappingReader.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/unit/app/PageInWindow.h"
#include "tests/unit/ui_menus/PopUp.h"
#include "ui/ComboMenu.h"
#include "ui/MapNotices.h"
#include "ui/MidiMenu.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

/// The way back on the page, and what is said of it.
class tst_TakeBack : public QObject, private PageInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { end(); }

    void theKeysTakeBackAndDoAgain();
    void theKeysDoNothingOnAnotherPage();
    void aCapturedShortcutIsTakenBackFromTheFileToo();
    void aDeletionOffersUndo();
    void theFirstOfTwoIsSaid();
    void aSetMappingOffersUndoAndKeep();
    void theOfferEndsAfterTenSeconds();
    void theOfferStaysWhileItHasTheFocus();
    void theOfferEndsWithTheNextStep();
    void theOfferEndsWhenAnotherMappingHasItsTurn();
    void aSaveSaysHowToStartWithIt();
    void aSaveThatIsKeptAtOnceSaysSo();
    void aSaveOfWhatIsKeptOffersNothing();
    void aLongNameIsShortenedAndTheSentenceIsNot();
    void aNameWithoutOneIsCalledUnknown();
    void whatCannotBeTakenBackIsSaid();
    void anOfferOfWhatCannotBeTakenBackEnds();
    void whatADialogSetIsTakenBackAtOnce();
    void importsAreSaidByTheirNumber();
    void theLinksAreReachedByTabAndHaveNames();

private:
    void press(bool again = false) const
    {
        QTest::keyClick(m_page->window(), Qt::Key_Z,
                        again ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
    }
    QLabel *line() const { return m_page->findChild<QLabel *>(QStringLiteral("notKept")); }
    QString said() const { return line()->isVisible() ? line()->accessibleName() : QString(); }
    ClickableLabel *link(const char *name) const
    {
        return m_page->findChild<ClickableLabel *>(QLatin1String(name));
    }
    QStringList names() const
    {
        QStringList found;
        for (const ZRButtonMap *map : m_rig->mappings.custom()) {
            found << map->name;
        }
        return found;
    }
    ZRButtonMap *listed(int index) const { return m_rig->mappings.custom().at(index); }

    const QByteArray m_custom =
        "<ZR><MAPPING software=\"Mix\"><BUTTON id=\"3\"><NORMAL label=\"a\"><KEY1 "
        "type=\"int\">65</KEY1></NORMAL>"
        "</BUTTON></MAPPING> <MAPPING software=\"Work\"/><MAPPING software=\"Work\"/></ZR>\n";
};

void tst_TakeBack::init()
{
    begin();
    m_rig->writeFile(QStringLiteral("custom.xml"), m_custom);
    makePage();
    QApplication::setActiveWindow(m_window.get());
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_TakeBack::theKeysTakeBackAndDoAgain()
{
    press(); // nothing to take back: nothing is said
    QCOMPARE(said(), QString());
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    const shortCut chosen = menu(3)->assignment(Layer::Normal);
    press();
    QCOMPARE(menu(3)->assignment(Layer::Normal), shortCut());
    QCOMPARE(said(), QStringLiteral("Button 3 is as it was."));
    QVERIFY(link("undo")->isHidden());
    press(true);
    QCOMPARE(menu(3)->assignment(Layer::Normal), chosen);
    QCOMPARE(said(), QStringLiteral("Button 3 was changed again."));
    press(true);
    QCOMPARE(menu(3)->assignment(Layer::Normal), chosen);
}

void tst_TakeBack::theKeysDoNothingOnAnotherPage()
{
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    m_page->hide();
    press();
    QVERIFY(m_rig->mappings.canTakeBack());
}

void tst_TakeBack::aCapturedShortcutIsTakenBackFromTheFileToo()
{
    menu(3)->loadShorcut(0, 65, -1, -1, QStringLiteral("A"));
    const QByteArray first = m_rig->readFile(QStringLiteral("current.xml"));
    menu(3)->loadShorcut(0, 66, -1, -1, QStringLiteral("B"));
    press();
    QCOMPARE(m_rig->readFile(QStringLiteral("current.xml")), first);
    press(true);
    QVERIFY(m_rig->readFile(QStringLiteral("current.xml")).contains("\"B\""));
}

void tst_TakeBack::aDeletionOffersUndo()
{
    m_page->deleteMap(QStringLiteral("Mix"));
    QCOMPARE(said(), QStringLiteral("'Mix' was deleted."));
    QVERIFY(link("undo")->isVisible() && link("keep")->isHidden());
    QTest::mouseClick(link("undo"), Qt::LeftButton);
    QCOMPARE(m_rig->readFile(QStringLiteral("custom.xml")), m_custom);
    QCOMPARE(names().constFirst(), QStringLiteral("Mix"));
    QCOMPARE(said(), QStringLiteral("'Mix' is back."));
    QVERIFY(link("undo")->isHidden());
    press(true);
    QCOMPARE(said(), QStringLiteral("'Mix' was deleted again."));
    QCOMPARE(names().size(), 2);
}

void tst_TakeBack::theFirstOfTwoIsSaid()
{
    m_page->deleteMap(QStringLiteral("Work"));
    QCOMPARE(said(), QStringLiteral("The first 'Work' was deleted."));
    m_page->deleteMap(QStringLiteral("Work"));
    QCOMPARE(said(), QStringLiteral("'Work' was deleted."));
}

void tst_TakeBack::aSetMappingOffersUndoAndKeep()
{
    m_page->newMap(listed(0));
    QCOMPARE(said(), QStringLiteral("'Mix' is in use. Start with it:"));
    QVERIFY(link("undo")->isVisible() && link("keep")->isVisible());
    QVERIFY(!link("undo")->geometry().intersects(link("keep")->geometry()));
    QVERIFY(m_page->rect().contains(link("undo")->geometry()));
    QTest::mouseClick(link("undo"), Qt::LeftButton);
    QVERIFY(m_rig->mappings.name().isEmpty());
    QCOMPARE(said(), QStringLiteral("'Mix' was not chosen."));

    m_page->newMap(listed(0));
    QTest::mouseClick(link("keep"), Qt::LeftButton);
    QVERIFY(m_rig->mappings.isKept());
    QVERIFY(link("keep")->isHidden());
    QCOMPARE(link("undo")->x(), link("keep")->x());       // in its place
    QCOMPARE(said(), QStringLiteral("'Mix' is in use.")); // it leads to nothing but "Undo" any more
}

void tst_TakeBack::theOfferEndsAfterTenSeconds()
{
    auto *timer = m_page->findChild<MapNotices *>()->findChild<QTimer *>();
    QVERIFY(!timer->isActive());
    m_page->deleteMap(QStringLiteral("Work"));
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 10000);
    timer->start(1);
    QTRY_VERIFY(line()->isHidden() && link("undo")->isHidden());
    QVERIFY(m_rig->mappings.canTakeBack()); // the keys still can

    m_page->newMap(listed(0));
    timer->start(1);
    QTRY_VERIFY(link("undo")->isHidden());
    QVERIFY(link("keep")->isVisible());
    QCOMPARE(said(), QStringLiteral("'Mix' is in use. Start with it:"));
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true); // from now on it is another
    QCOMPARE(said(), QStringLiteral("Your changes end with the program."));
}

void tst_TakeBack::theOfferStaysWhileItHasTheFocus()
{
    auto *timer = m_page->findChild<MapNotices *>()->findChild<QTimer *>();
    m_page->deleteMap(QStringLiteral("Mix"));
    link("undo")->setFocus(Qt::TabFocusReason);
    timer->start(1);
    QTRY_COMPARE(timer->interval(), 10000); // once more
    QVERIFY(link("undo")->isVisible());
    QTest::keyClick(link("undo"), Qt::Key_Return);
    QCOMPARE(names().constFirst(), QStringLiteral("Mix"));
}

void tst_TakeBack::theOfferEndsWithTheNextStep()
{
    m_page->deleteMap(QStringLiteral("Mix"));
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    QVERIFY(link("undo")->isHidden()); // it would take back something else
    QCOMPARE(said(), QStringLiteral("Your changes end with the program."));
}

void tst_TakeBack::theOfferEndsWhenAnotherMappingHasItsTurn()
{
    m_page->deleteMap(QStringLiteral("Mix"));
    const MappingSession::Aside general = m_rig->mappings.exchange({});
    QVERIFY(link("undo")->isHidden()); // the step is none of this mapping's
    m_rig->mappings.exchange(general);
    press();
    QCOMPARE(names().constFirst(), QStringLiteral("Mix"));
}

void tst_TakeBack::aSaveSaysHowToStartWithIt()
{
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    m_page->saveCurrentMap(QStringLiteral("Studio"));
    QCOMPARE(said(), QStringLiteral("Saved as 'Studio'. Start with it:"));
    QVERIFY(link("keep")->isVisible() && link("undo")->isHidden());
    auto *timer = m_page->findChild<MapNotices *>()->findChild<QTimer *>();
    timer->start(1);
    QTRY_VERIFY(!timer->isActive());
    QCOMPARE(said(), QStringLiteral("Saved as 'Studio'. Start with it:")); // as long as it is so
    QTest::mouseClick(link("keep"), Qt::LeftButton);
    QCOMPARE(said(), QString());
}

void tst_TakeBack::aSaveThatIsKeptAtOnceSaysSo()
{
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    m_page->saveCurrentMap(QStringLiteral("Studio"));
    QTest::mouseClick(link("keep"), Qt::LeftButton);
    QCOMPARE(said(), QStringLiteral("Saved as 'Studio'."));
    QVERIFY(link("keep")->isHidden() && link("undo")->isHidden());
}

void tst_TakeBack::aSaveOfWhatIsKeptOffersNothing()
{
    menu(3)->loadShorcut(0, 65, -1, -1, QStringLiteral("A"));
    m_page->saveCurrentMap(QStringLiteral("Studio"));
    QCOMPARE(said(), QStringLiteral("Saved as 'Studio'."));
    QVERIFY(link("keep")->isHidden());
    auto *timer = m_page->findChild<MapNotices *>()->findChild<QTimer *>();
    timer->start(1);
    QTRY_VERIFY(line()->isHidden());
}

void tst_TakeBack::aLongNameIsShortenedAndTheSentenceIsNot()
{
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    const QString name = QStringLiteral("A mapping for all that I do on Mondays");
    m_page->saveCurrentMap(name);
    QVERIFY2(line()->text().endsWith(QStringLiteral("'. Start with it:")), qPrintable(line()->text()));
    QVERIFY(line()->text().startsWith(QStringLiteral("Saved as 'A")));
    QVERIFY(line()->text().contains(QChar(0x2026)));
    QVERIFY(line()->toolTip().contains(name));
    QVERIFY(line()->accessibleName().contains(name));
    QVERIFY(line()->fontMetrics().horizontalAdvance(line()->text()) <= line()->width());
}

void tst_TakeBack::aNameWithoutOneIsCalledUnknown()
{
    m_page->saveCurrentMap(QString());
    QVERIFY(said().startsWith(QStringLiteral("Saved as 'Unknown'.")));
    m_page->deleteMap(QString());
    QCOMPARE(said(), QStringLiteral("'Unknown' was deleted."));
}

void tst_TakeBack::whatCannotBeTakenBackIsSaid()
{
    const auto *failure = m_page->findChild<QLabel *>(QStringLiteral("failure"), Qt::FindDirectChildrenOnly);
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    m_page->deleteMap(QStringLiteral("Mix"));
    m_rig->writeFile(QStringLiteral("custom.xml"), "<ZR/>");
    press();
    QVERIFY(failure->isVisible());
    QCOMPARE(failure->accessibleName(), QStringLiteral("Nothing changed: it has been changed since"));
    QCOMPARE(m_rig->readFile(QStringLiteral("custom.xml")), QByteArray("<ZR/>"));
    press();
    QVERIFY(failure->isHidden());
    QCOMPARE(said(), QStringLiteral("Button 3 is as it was."));
}

void tst_TakeBack::anOfferOfWhatCannotBeTakenBackEnds()
{
    menu(3)->loadMidi(0, 1, 60, 100, 0, true, true);
    const shortCut chosen = menu(3)->assignment(Layer::Normal);
    m_page->deleteMap(QStringLiteral("Mix"));
    m_rig->writeFile(QStringLiteral("custom.xml"), "<ZR/>");
    QTest::mouseClick(link("undo"), Qt::LeftButton);
    QVERIFY(link("undo")->isHidden()); // a second click would take back something else
    QCOMPARE(said(), QStringLiteral("Your changes end with the program."));
    QCOMPARE(menu(3)->assignment(Layer::Normal), chosen);
}

void tst_TakeBack::whatADialogSetIsTakenBackAtOnce()
{
    const auto type = [this](const char *channel, const char *value) {
        PopUp::chooseWhenOpen({QStringLiteral("Normal"), QStringLiteral("Midi")});
        menu(3)->dislayMenu();
        auto *dialog = m_page->findChild<MidiMenu *>();
        QVERIFY(dialog->isVisible());
        const QMap<QString, QString> texts = {
            {QStringLiteral("Channel"), QLatin1String(channel)},
            {QStringLiteral("Value that a touch sends"), QLatin1String(value)}};
        for (QLineEdit *field : dialog->findChildren<QLineEdit *>()) {
            if (texts.contains(field->accessibleName())) {
                field->selectAll();
                QTest::keyClicks(field, texts.value(field->accessibleName()));
            }
        }
        QTest::keyClick(dialog, Qt::Key_Return);
        QVERIFY(dialog->isHidden());
        QApplication::setActiveWindow(m_window.get());
    };
    type("15", "100");
    QCOMPARE(menu(3)->assignment(Layer::Normal).channel, 15);
    QCOMPARE(menu(3)->assignment(Layer::Normal).v_on, 100);
    type("14", "99");
    press();
    QCOMPARE(menu(3)->assignment(Layer::Normal).channel, 15);
    QCOMPARE(menu(3)->assignment(Layer::Normal).v_on, 100);
    press();
    QCOMPARE(menu(3)->assignment(Layer::Normal), shortCut());
    QVERIFY(!m_rig->mappings.canTakeBack());
}

void tst_TakeBack::importsAreSaidByTheirNumber()
{
    const auto import = [this](const QByteArray &content) {
        m_rig->writeFile(QStringLiteral("more.xml"), content);
        m_page->importFiles({m_rig->data.filePath(QStringLiteral("more.xml"))});
    };
    import("<ZR><MAPPING software=\"A, B\"/></ZR>");
    QCOMPARE(said(), QStringLiteral("'A, B' was imported."));
    import("<ZR><MAPPING software=\"C\"/><MAPPING software=\"D\"/></ZR>");
    QCOMPARE(said(), QStringLiteral("Imported: C, D"));
    press();
    QCOMPARE(said(), QStringLiteral("Not imported any more: C, D"));
    press(true);
    QCOMPARE(said(), QStringLiteral("Imported again: C, D"));
}

void tst_TakeBack::theLinksAreReachedByTabAndHaveNames()
{
    m_page->newMap(listed(0));
    link("keep")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), link("undo"));
    QCOMPARE(link("undo")->accessibleName(), QStringLiteral("Undo"));
    QVERIFY(link("undo")->toolTip().contains(QStringLiteral("Ctrl+Z")));
    QCOMPARE(QAccessible::queryAccessibleInterface(link("undo"))->role(), QAccessible::Button);
}

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    AppFonts::load();
    tst_TakeBack test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_TakeBack.moc"
