#include "mapping/XmlMappingReader.h"
#include "tests/support/log/LogCapture.h"
#include "tests/support/main/Main.h"
#include "tests/unit/ui_menus/SelectorOnPage.h"
#include "ui/SaveDialog.h"

#include <QGraphicsEffect>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

/// The selector as it looks and opens, what a choice in it says, and what its entries are called.
class tst_ComboMapping : public QObject, private SelectorOnPage
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void theBarLooksAsItShould();
    void theMenuHasItsEntriesInOrder();
    void entriesCarryIndexAndType();
    void setEmitsTheMappingOfItsPlace();
    void deleteEmitsTheNameOfItsMapping();
    void namesAndTranslationsDecideNothing();
    void namesAreShownAsTheyAre();
    void saveOpensTheDialogAndItsNameIsPassedOn();
    void theSelectorMayGoWhileItsMenuIsOpen();
    void theBarIsDimmedWhileItsMenuIsOpen();
    void theKeyboardAndTheMouseOpenTheMenu();
    void theLogSaysWhatArrivedAndWhatWasChosen();
    void aCheckMarkStandsAtTheMappingInUse();
    void typingGoesToTheEntryThatBeginsSo();
    void aMappingWithoutANameIsDeletedAsSuch();
};

void tst_ComboMapping::theBarLooksAsItShould()
{
    QCOMPARE(m_selector->size(), QSize(160, 51));
    QStringList sheets;
    QLabel *title = nullptr;
    const QList<QLabel *> labels = m_selector->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        sheets.append(label->styleSheet());
        if (!label->text().isEmpty()) {
            title = label;
        }
    }
    QCOMPARE(sheets,
             (QStringList{QStringLiteral("background-color: rgb(73, 90, 232)"),
                          QStringLiteral("background-image: url(:/icons/comboarrow.png);"),
                          QStringLiteral(
                              "QLabel { color : rgba(255,255,255,1);  background-color: rgba(0,0,0,0);}")}));
    QVERIFY(title);
    QCOMPARE(title->text(), QStringLiteral("Mapping"));
    QCOMPARE(title->font().family(), QStringLiteral("Segoe UI"));
    QCOMPARE(title->font().pointSize(), 12);
    QCOMPARE(title->font().weight(), int(QFont::Normal));
    QCOMPARE(title->alignment(), Qt::AlignCenter);
    QVERIFY(!m_selector->accessibleName().isEmpty());
    QVERIFY(!m_selector->toolTip().isEmpty());
}

void tst_ComboMapping::theMenuHasItsEntriesInOrder()
{
    QStringList entries;
    openMenu([&](QMenu &top) { entries = PopUp::texts(top); });
    QCOMPARE(entries, (QStringList{examples, QStringLiteral("-"), custom, QStringLiteral("-"),
                                   QStringLiteral("Save"), QStringLiteral("-")}));
}

void tst_ComboMapping::entriesCarryIndexAndType()
{
    m_selector->newMapListReady(maps({QStringLiteral("a"), QStringLiteral("b")}), false, 0);
    m_selector->newMapListReady(maps({QStringLiteral("c"), QStringLiteral("d")}), true, 0);
    openMenu([](QMenu &top) {
        for (const QString &type : {QStringLiteral("Default"), QStringLiteral("Custom")}) {
            const QMenu *list = PopUp::submenu(top, type == QLatin1String("Custom") ? custom : examples);
            for (int index = 0; index < 2; ++index) {
                Q_EMIT list->actions().at(2 * index)->menu()->aboutToShow();
                const QList<QAction *> actions = list->actions().at(2 * index)->menu()->actions();
                QVERIFY(!actions.isEmpty());
                for (const QAction *action : actions) {
                    if (!action->isSeparator()) {
                        QCOMPARE(action->property("index"), QVariant(index));
                        QCOMPARE(action->property("type"), QVariant(type));
                    }
                }
            }
        }
    });
}

void tst_ComboMapping::setEmitsTheMappingOfItsPlace()
{
    const QList<ZRButtonMap *> library = maps({QStringLiteral("a"), QStringLiteral("b")});
    const QList<ZRButtonMap *> own = maps({QStringLiteral("c"), QStringLiteral("d")});
    m_selector->newMapListReady(library, false, 0);
    m_selector->newMapListReady(own, true, 0);
    QSignalSpy chosen(m_selector, &ComboMapping::newMap);
    QSignalSpy deleted(m_selector, &ComboMapping::deleteMap);

    PopUp::chooseWhenOpen({examples, QStringLiteral("b"), setText});
    m_selector->dislayMenu();
    PopUp::chooseWhenOpen({custom, QStringLiteral("d"), setText});
    m_selector->dislayMenu();
    QCOMPARE(chosen.size(), 2);
    QCOMPARE(chosen.at(0).at(0).value<ZRButtonMap *>(), library.at(1));
    QCOMPARE(chosen.at(1).at(0).value<ZRButtonMap *>(), own.at(1));
    QCOMPARE(deleted.size(), 0);
}

void tst_ComboMapping::deleteEmitsTheNameOfItsMapping()
{
    m_selector->newMapListReady(maps({QStringLiteral("a"), QStringLiteral("b")}), true, 0);
    QSignalSpy chosen(m_selector, &ComboMapping::newMap);
    QSignalSpy deleted(m_selector, &ComboMapping::deleteMap);
    PopUp::chooseWhenOpen({custom, QStringLiteral("b"), deleteText});
    m_selector->dislayMenu();
    QCOMPARE(deleted.size(), 1);
    QCOMPARE(deleted.at(0).at(0).toString(), QStringLiteral("b"));
    QCOMPARE(chosen.size(), 0);
}

void tst_ComboMapping::namesAndTranslationsDecideNothing()
{
    m_selector->newMapListReady(maps({QStringLiteral("Save"), QStringLiteral("Delete")}), true, 0);
    QSignalSpy chosen(m_selector, &ComboMapping::newMap);
    QSignalSpy deleted(m_selector, &ComboMapping::deleteMap);
    // As if translated: all texts in the menu are others.
    PopUp::whenOpen([] {
        QAction *mapping = PopUp::entry(*PopUp::submenu(*PopUp::active(), custom), deleteText);
        Q_EMIT mapping->menu()->aboutToShow();
        mapping->menu()->actions().first()->setText(deleteText);
        mapping->menu()->actions().last()->setText(QStringLiteral("Weg damit"));
        PopUp::choose({custom, deleteText, QStringLiteral("Weg damit")});
    });
    m_selector->dislayMenu();
    QCOMPARE(deleted.size(), 1);
    QCOMPARE(deleted.at(0).at(0).toString(), deleteText);
    PopUp::chooseWhenOpen({custom, deleteText, deleteText});
    m_selector->dislayMenu();
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(deleted.size(), 1);
}

void tst_ComboMapping::namesAreShownAsTheyAre()
{
    const QString endless(5000, QLatin1Char('W'));
    const QString whole(200, QLatin1Char('i'));
    m_selector->newMapListReady(maps({QStringLiteral("Cut & paste"), endless, QString(), whole}), true, 0);
    openMenu([&](QMenu &top) {
        const QList<QAction *> actions = PopUp::submenu(top, custom)->actions();
        QCOMPARE(actions.at(0)->text(), QStringLiteral("Cut && paste")); // one of them is shown
        QVERIFY(actions.at(2)->text().size() < 100);
        QCOMPARE(actions.at(2)->toolTip(), endless.left(200) + QChar(0x2026));
        QCOMPARE(actions.at(6)->toolTip(), whole);
        QCOMPARE(actions.at(4)->text(), QString());
    });
    QSignalSpy deleted(m_selector, &ComboMapping::deleteMap);
    PopUp::chooseWhenOpen({custom, QStringLiteral("Cut && paste"), deleteText});
    m_selector->dislayMenu();
    QCOMPARE(deleted.at(0).at(0).toString(), QStringLiteral("Cut & paste"));
}

void tst_ComboMapping::saveOpensTheDialogAndItsNameIsPassedOn()
{
    QSignalSpy saved(m_selector, &ComboMapping::saveCurrentMap);
    QVERIFY(!m_selector->saveDialog()->isVisible());
    QCOMPARE(m_selector->saveDialog()->parentWidget(), m_page.get());
    PopUp::chooseWhenOpen({QStringLiteral("Save")});
    m_selector->dislayMenu();
    QVERIFY(m_selector->saveDialog()->isVisible());
    QVERIFY(!m_selector->graphicsEffect()->isEnabled());
    m_selector->newMapListReady(maps({QStringLiteral("example")}), false, 0);
    m_selector->newMapListReady(maps({QStringLiteral("other"), QStringLiteral("mine")}), true, 0);
    const auto *line = m_selector->saveDialog()->findChild<QLabel *>(QStringLiteral("failure"));
    auto *name = m_selector->saveDialog()->findChild<QLineEdit *>();
    name->setText(QStringLiteral("mine"));
    QVERIFY(line->isVisible());
    name->setText(QStringLiteral("example")); // another list
    QVERIFY(line->isHidden());
    Q_EMIT m_selector->saveDialog()->saveCurrentMap(QStringLiteral("mine"));
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.at(0).at(0).toString(), QStringLiteral("mine"));
}

void tst_ComboMapping::theSelectorMayGoWhileItsMenuIsOpen()
{
    PopUp::whenOpen([this] { m_page.reset(); });
    m_selector->dislayMenu();
    QVERIFY(!m_page);
}

void tst_ComboMapping::theBarIsDimmedWhileItsMenuIsOpen()
{
    auto *dimming = qobject_cast<QGraphicsOpacityEffect *>(m_selector->graphicsEffect());
    QVERIFY(dimming);
    QCOMPARE(dimming->opacity(), 0.5);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(!dimming->isEnabled());
        bool dimmed = false;
        openMenu([&](QMenu &) { dimmed = dimming->isEnabled(); });
        QVERIFY(dimmed);
    }
    QVERIFY(!dimming->isEnabled());
}

void tst_ComboMapping::theKeyboardAndTheMouseOpenTheMenu()
{
    QVERIFY(m_selector->focusPolicy() & Qt::TabFocus);
    int opened = 0;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        PopUp::whenOpen([&] { ++opened; });
        QTest::keyClick(m_selector, key);
    }
    QPoint place;
    PopUp::whenOpen([&] {
        ++opened;
        place = PopUp::active()->pos();
    });
    QTest::mousePress(m_selector, Qt::LeftButton);
    QCOMPARE(opened, 4);
    QCOMPARE(place, m_selector->mapToGlobal(QPoint(0, 50)));
}

void tst_ComboMapping::theLogSaysWhatArrivedAndWhatWasChosen()
{
    LogCapture log;
    m_selector->newMapListReady(maps({QStringLiteral("a")}), false, 0);
    m_selector->newMapListReady(maps({QStringLiteral("b")}), true, 0);
    const auto lines = [&log] { return log.takeLines().filter(QStringLiteral("info: ")); };
    QCOMPARE(lines(), (QStringList{QStringLiteral("info: newMapListReady Default"),
                                   QStringLiteral("info: newMapListReady Costom")}));
    PopUp::chooseWhenOpen({examples, QStringLiteral("a"), setText});
    m_selector->dislayMenu();
    PopUp::chooseWhenOpen({custom, QStringLiteral("b"), deleteText});
    m_selector->dislayMenu();
    PopUp::chooseWhenOpen({QStringLiteral("Save")});
    m_selector->dislayMenu();
    QCOMPARE(lines(), (QStringList{QStringLiteral("info: Selected Default Item Set 0"),
                                   QStringLiteral("info: Selected Custom Item Delete 0"),
                                   QStringLiteral("info: Save Current Template")}));
}

void tst_ComboMapping::aCheckMarkStandsAtTheMappingInUse()
{
    QList<ZRButtonMap *> maps{new ZRButtonMap(QStringLiteral("A")), new ZRButtonMap(QStringLiteral("B"))};
    m_selector->newMapListReady(maps, false, 0);
    const auto marked = [this] {
        QStringList names;
        openMenu([&](QMenu &top) {
            QMenu *list = PopUp::submenu(top, QStringLiteral("Examples"));
            Q_EMIT list->aboutToShow();
            for (const QAction *action : top.actions() + list->actions()) {
                if (action->isChecked()) {
                    names << action->text();
                }
            }
        });
        return names;
    };
    QCOMPARE(marked(), QStringList());
    m_selector->setInUse(maps.at(1));
    QCOMPARE(marked(), (QStringList{QStringLiteral("Examples"), QStringLiteral("B")}));
    m_selector->setInUse(maps.at(0));
    QCOMPARE(marked(), (QStringList{QStringLiteral("Examples"), QStringLiteral("A")}));
    m_selector->setInUse(nullptr);
    QCOMPARE(marked(), QStringList());
}

void tst_ComboMapping::typingGoesToTheEntryThatBeginsSo()
{
    m_selector->newMapListReady(
        maps({QStringLiteral("Blender"), QStringLiteral("GIMP"), QStringLiteral("Microsoft Excel"),
              QStringLiteral("Microsoft Word"), QStringLiteral("R&D"), QStringLiteral("GNOME")}),
        false, 0);
    openMenu([&](QMenu &top) {
        top.setActiveAction(PopUp::entry(top, examples));
        QTest::keyClick(&top, Qt::Key_Right);
        QMenu *list = PopUp::active();
        QCOMPARE(list->title(), examples);
        const auto chosen = [&] { return list->activeAction() ? list->activeAction()->text() : QString(); };
        const auto pause = [] { QTest::qWait(1100); };
        QTest::keyClicks(list, QStringLiteral("microsoft w"));
        QCOMPARE(chosen(), QStringLiteral("Microsoft Word"));
        QCOMPARE(PopUp::active(), list);             // not opened: whoever types goes on
        QTest::keyClicks(list, QStringLiteral("x")); // nothing begins so
        QCOMPARE(chosen(), QStringLiteral("Microsoft Word"));
        pause();
        QTest::keyClicks(list, QStringLiteral("g"));
        QCOMPARE(chosen(), QStringLiteral("GNOME"));
        QTest::keyClicks(list, QStringLiteral("g"));
        QCOMPARE(chosen(), QStringLiteral("GIMP"));
        pause();
        QTest::keyClicks(list, QStringLiteral("r&"));
        QCOMPARE(chosen(), QStringLiteral("R&&D"));
        // With an entry's own menu open.
        QTest::keyClick(list, Qt::Key_Right);
        QVERIFY(PopUp::active() != list);
        pause();
        QTest::keyClicks(PopUp::active(), QStringLiteral("bl"));
        QCOMPARE(chosen(), QStringLiteral("Blender"));
        QCOMPARE(PopUp::active(), list);
        QTest::keyClick(list, Qt::Key_Right);
        QCOMPARE(PopUp::texts(*PopUp::active()), QStringList{setText});
    });
}

void tst_ComboMapping::aMappingWithoutANameIsDeletedAsSuch()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("custom.xml")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<ZR><MAPPING software=\"Unknown\"/><MAPPING/></ZR>");
    file.close();
    XmlMappingReader reader;
    connect(&reader, &XmlMappingReader::newMapListReady, m_selector, &ComboMapping::newMapListReady);
    QVERIFY(reader.readMapList(file.fileName(), true));
    QStringList deleted;
    connect(m_selector, &ComboMapping::deleteMap, this, [&](const QString &name) { deleted.append(name); });
    for (const int place : {0, 1}) {
        PopUp::whenOpen([place] {
            QAction *mapping =
                PopUp::entry(*PopUp::submenu(*PopUp::active(), custom), QStringLiteral("Unknown"), place);
            PopUp::active()->setActiveAction(PopUp::entry(*PopUp::active(), custom));
            QTest::keyClick(PopUp::active(), Qt::Key_Right);
            PopUp::active()->setActiveAction(mapping);
            QTest::keyClick(PopUp::active(), Qt::Key_Right);
            PopUp::choose({deleteText});
        });
        m_selector->dislayMenu();
    }
    QCOMPARE(deleted, (QStringList{QStringLiteral("Unknown"), QString()}));
}

QTEST_MAIN(tst_ComboMapping)
#include "tst_ComboMapping.moc"
