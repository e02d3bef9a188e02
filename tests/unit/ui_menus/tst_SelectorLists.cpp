#include "tests/support/main/Main.h"
#include "tests/unit/ui_menus/SelectorOnPage.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

/// The lists of the selector: what they show, when they are replaced, and whose the mappings are.
class tst_SelectorLists : public QObject, private SelectorOnPage
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aLibraryFillsExamplesAndLeavesCustomAlone();
    void customMappingsCanBeDeletedToo();
    void aNewListReplacesTheEntriesCompletely();
    void aListThatArrivesWhileTheMenuIsOpenWaits();
    void ofTwoListsThatArriveWhileTheMenuIsOpenTheLastCounts();
    void aListMayArriveInsideASlotOfNewMap();
    void aListMayArriveInsideASlotOfDeleteMap();
    void theListsAreOwned();
    void listsThatHaveAnOwnerStayTheirs();
    void aMapInTheOpenMenuOutlivesItsList();
    void aThousandMappingsKeepTheirOrder();
    void aListIsBuiltWhenItIsOpenedAndOnce();
    void anEmptyListSaysSo();
    void theDefaultIsSelectedIfThereIsOne();
};

void tst_SelectorLists::aLibraryFillsExamplesAndLeavesCustomAlone()
{
    m_selector->newMapListReady(maps({QStringLiteral("mine")}), true, 0);
    m_selector->newMapListReady(maps({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}), false,
                                1);
    QCOMPARE(entriesOf(examples),
             (QStringList{QStringLiteral("a: Set"), QStringLiteral("-"), QStringLiteral("b: Set"),
                          QStringLiteral("-"), QStringLiteral("c: Set"), QStringLiteral("-")}));
    QCOMPARE(entriesOf(custom), (QStringList{QStringLiteral("mine: Set - Delete"), QStringLiteral("-")}));
}

void tst_SelectorLists::customMappingsCanBeDeletedToo()
{
    m_selector->newMapListReady(maps({QStringLiteral("a"), QStringLiteral("b")}), true, 0);
    QCOMPARE(entriesOf(custom), (QStringList{QStringLiteral("a: Set - Delete"), QStringLiteral("-"),
                                             QStringLiteral("b: Set - Delete"), QStringLiteral("-")}));
    QCOMPARE(entriesOf(examples), QStringList());
}

void tst_SelectorLists::aNewListReplacesTheEntriesCompletely()
{
    m_selector->newMapListReady(maps({QStringLiteral("a"), QStringLiteral("b")}), true, 0);
    m_selector->newMapListReady(maps({QStringLiteral("c")}), true, 0);
    QCOMPARE(entriesOf(custom), (QStringList{QStringLiteral("c: Set - Delete"), QStringLiteral("-")}));
    m_selector->newMapListReady({}, true, 0);
    QCOMPARE(entriesOf(custom), QStringList{QStringLiteral("none yet")});
}

void tst_SelectorLists::aListThatArrivesWhileTheMenuIsOpenWaits()
{
    const QPointer<ZRButtonMap> seen = maps({QStringLiteral("seen")}).first();
    m_selector->newMapListReady({seen}, true, 0);
    QStringList deleted;
    connect(m_selector, &ComboMapping::deleteMap, this, [&](const QString &name) { deleted.append(name); });
    PopUp::whenOpen([&] {
        m_selector->newMapListReady(maps({QStringLiteral("new")}), true, 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        PopUp::choose({custom, QStringLiteral("seen"), deleteText});
    });
    m_selector->dislayMenu();
    QCOMPARE(deleted, QStringList{QStringLiteral("seen")});
    QCOMPARE(entriesOf(custom), (QStringList{QStringLiteral("new: Set - Delete"), QStringLiteral("-")}));
    QTRY_VERIFY(!seen);
}

void tst_SelectorLists::ofTwoListsThatArriveWhileTheMenuIsOpenTheLastCounts()
{
    const QPointer<ZRButtonMap> overtaken = maps({QStringLiteral("overtaken")}).first();
    PopUp::whenOpen([&] {
        m_selector->newMapListReady({overtaken}, false, 0);
        m_selector->newMapListReady(maps({QStringLiteral("last"), QStringLiteral("default")}), false, 1);
    });
    m_selector->dislayMenu();
    QVERIFY(!overtaken);
    QCOMPARE(entriesOf(examples), (QStringList{QStringLiteral("last: Set"), QStringLiteral("-"),
                                               QStringLiteral("default: Set"), QStringLiteral("-")}));
}

void tst_SelectorLists::aListMayArriveInsideASlotOfNewMap()
{
    const QPointer<ZRButtonMap> old = maps({QStringLiteral("old")}).first();
    m_selector->newMapListReady({old}, false, 0);
    QString nameAfterwards;
    connect(m_selector, &ComboMapping::newMap, this, [&](ZRButtonMap *map) {
        const QPointer<ZRButtonMap> inHand(map);
        m_selector->newMapListReady(maps({QStringLiteral("new")}), false, 0);
        QVERIFY(inHand);
        nameAfterwards = map->name;
    });
    PopUp::chooseWhenOpen({examples, QStringLiteral("old"), setText});
    m_selector->dislayMenu();
    QCOMPARE(nameAfterwards, QStringLiteral("old"));
    QTRY_VERIFY(!old);

    nameAfterwards.clear();
    PopUp::chooseWhenOpen({examples, QStringLiteral("new"), setText});
    m_selector->dislayMenu();
    QCOMPARE(nameAfterwards, QStringLiteral("new"));
}

void tst_SelectorLists::aListMayArriveInsideASlotOfDeleteMap()
{
    m_selector->newMapListReady(maps({QStringLiteral("a"), QStringLiteral("b")}), true, 0);
    QString nameAfterwards;
    connect(m_selector, &ComboMapping::deleteMap, this, [&](const QString &name) {
        m_selector->newMapListReady(maps({QStringLiteral("b")}), true, 0);
        nameAfterwards = name;
    });
    PopUp::chooseWhenOpen({custom, QStringLiteral("a"), deleteText});
    m_selector->dislayMenu();
    QCOMPARE(nameAfterwards, QStringLiteral("a"));
    QCOMPARE(entriesOf(custom), (QStringList{QStringLiteral("b: Set - Delete"), QStringLiteral("-")}));
}

void tst_SelectorLists::theListsAreOwned()
{
    QList<QPointer<ZRButtonMap>> watched;
    for (const bool own : {false, true}) {
        for (int i = 0; i < 2; ++i) { // the second replaces the first
            const QList<ZRButtonMap *> list = maps({QStringLiteral("a"), QStringLiteral("b")});
            for (ZRButtonMap *map : list) {
                watched.append(map);
            }
            m_selector->newMapListReady(list, own, 0);
        }
    }
    m_page.reset(); // before the replaced ones had their turn
    for (const QPointer<ZRButtonMap> &map : qAsConst(watched)) {
        QVERIFY(!map);
    }
}

void tst_SelectorLists::listsThatHaveAnOwnerStayTheirs()
{
    QObject owner;
    const QPointer<ZRButtonMap> map = maps({QStringLiteral("a")}).first();
    map->setParent(&owner);
    m_selector->newMapListReady({map}, true, 0);
    m_selector->newMapListReady({}, true, 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(map);
    QCOMPARE(map->parent(), &owner);
    m_page.reset();
    QVERIFY(map);
}

void tst_SelectorLists::aMapInTheOpenMenuOutlivesItsList()
{
    auto owner = std::make_unique<QObject>();
    const QPointer<ZRButtonMap> map = maps({QStringLiteral("seen")}).first();
    map->setParent(owner.get());
    m_selector->newMapListReady({map}, true, 0);
    QString chosen;
    connect(m_selector, &ComboMapping::newMap, this, [&](const ZRButtonMap *each) { chosen = each->name; });
    PopUp::whenOpen([&] {
        m_selector->newMapListReady({}, true, 0);
        owner.reset();
        PopUp::choose({custom, QStringLiteral("seen"), setText});
    });
    m_selector->dislayMenu();
    QCOMPARE(chosen, QStringLiteral("seen"));
    QTRY_VERIFY(!map);
}

void tst_SelectorLists::aThousandMappingsKeepTheirOrder()
{
    QStringList names;
    for (int i = 0; i < 1000; ++i) {
        names.append(QString::number((i * 617) % 1000));
    }
    m_selector->newMapListReady(maps(names), false, 0);
    QStringList shown;
    openMenu([&](QMenu &top) {
        const QList<QAction *> actions = PopUp::submenu(top, examples)->actions();
        for (const QAction *action : actions) {
            if (!action->isSeparator()) {
                shown.append(action->text());
            }
        }
    });
    QCOMPARE(shown, names);
}

void tst_SelectorLists::aListIsBuiltWhenItIsOpenedAndOnce()
{
    QStringList many;
    for (int i = 0; i < 1001; ++i) {
        many.append(QString::number(i));
    }
    m_selector->newMapListReady(maps(many), false, 0);
    const QMenu *first = nullptr;
    openMenu([&](QMenu &top) {
        QMenu *list = PopUp::entry(top, examples)->menu();
        QVERIFY(list->isEmpty());
        PopUp::submenu(top, examples);
        first = list->actions().first()->menu();
        QVERIFY(first->isEmpty()); // nor is a mapping's own
    });
    openMenu([&](QMenu &top) {
        QCOMPARE(PopUp::submenu(top, examples)->actions().first()->menu(), first);
        QCOMPARE(PopUp::entry(top, examples)->menu()->actions().size(), 2 * many.size());
    });
    m_selector->newMapListReady(maps(many), false, 0);
    openMenu([](QMenu &top) { QVERIFY(PopUp::entry(top, examples)->menu()->isEmpty()); });
}

void tst_SelectorLists::anEmptyListSaysSo()
{
    QCOMPARE(entriesOf(custom), QStringList{QStringLiteral("none yet")});
    openMenu([&](QMenu &top) { QVERIFY(!PopUp::submenu(top, custom)->actions().first()->isEnabled()); });
    m_selector->newMapListReady(maps({QStringLiteral("Mine")}), true, 0);
    QVERIFY(!entriesOf(custom).contains(QStringLiteral("none yet")));
    m_selector->newMapListReady({}, true, 0);
    QCOMPARE(entriesOf(custom), QStringList{QStringLiteral("none yet")});
}

void tst_SelectorLists::theDefaultIsSelectedIfThereIsOne()
{
    QSignalSpy chosen(m_selector, &ComboMapping::newMap);
    m_selector->selectDefault();
    const QList<ZRButtonMap *> library = maps({QStringLiteral("a"), QStringLiteral("b")});
    m_selector->newMapListReady(maps({QStringLiteral("mine")}), true, 0);
    m_selector->selectDefault();
    QCOMPARE(chosen.size(), 0);
    m_selector->newMapListReady(library, false, 1);
    QCOMPARE(chosen.size(), 0); // not by itself
    m_selector->selectDefault();
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.at(0).at(0).value<ZRButtonMap *>(), library.at(1));
    m_selector->newMapListReady(maps({QStringLiteral("a")}), false, 1);
    m_selector->selectDefault();
    QCOMPARE(chosen.size(), 1); // outside the list
}

QTEST_MAIN(tst_SelectorLists)
#include "tst_SelectorLists.moc"
