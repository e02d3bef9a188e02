#include "app/frame/ActionLabels.h"
#include "tests/support/main/Main.h"
#include "tests/unit/ui_menus/MenuOnPage.h"

#include <QAccessible>
#include <QGraphicsEffect>
#include <QLabel>
#include <QTest>

/// The action menu as it looks, opens and closes, and what its labels and check marks say.
class tst_ComboMenu : public QObject, private MenuOnPage
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aCombinationNeverLosesItsLastKey();
    void tellsWholeWhatItsLabelsCut();

    void labelsAndPicturesAreInPlace();
    void theMenuHasItsEntriesInOrder();
    void theLayersAreShownInUpperCase();
    void aShift1ChoiceKeepsTheRestOfTheLayerLabel();
    void aMappingsMonitorsShowAsChosenOnes();
    void anEndlessLabelIsCutAndSaidInFullByTheToolTip();
    void mappingsLabelsAreNoMarkup();

    void closingTheMenuChangesNothing();

    void theCheckMarkShowsWhatTheLayerDoes_data();
    void theCheckMarkShowsWhatTheLayerDoes();
    void aChoiceThatOnlyOpensADialogMovesNoCheckMark();
    void theMenuOpensBelowAndDimsTheBar();
    void theKeyboardOpensTheMenu();
    void aClickOnTheBarOfTheOpenMenuDoesNotReopenIt();
    void hidingThePageClosesTheMenu();
    void screenReadersAreToldWhatItIs();
    void screenReadersOpenTheMenu();
};

void tst_ComboMenu::aCombinationNeverLosesItsLastKey()
{
    ComboMenuLabel label(nullptr);
    label.setFont(ActionLabels::layersFont());
    const QString keys = QStringLiteral("CTRL + ALT + PRTSCN");
    label.setParts({keys});
    const auto shownIn = [&label](const QString &sample) {
        label.resize(label.fontMetrics().horizontalAdvance(sample) + 2, 20);
        return label.shownText();
    };
    QCOMPARE(shownIn(keys), keys);
    QCOMPARE(shownIn(QStringLiteral("CTRL+ALT+PRTSCN")), QStringLiteral("CTRL+ALT+PRTSCN"));
    QCOMPARE(label.cutParts(), QVector<int>());
    QCOMPARE(shownIn(QStringLiteral("CT+AL+PRTSCN")), QStringLiteral("CT+AL+PRTSCN"));
    QCOMPARE(label.cutParts(), QVector<int>{0});
    QCOMPARE(shownIn(QStringLiteral("\u2026AL+PRTSCN")), QStringLiteral("\u2026AL+PRTSCN"));

    // Two of them side by side, as Shift 1 and Shift 2 are.
    label.setParts({keys, QStringLiteral("CTRL + \u21e7 + ALT + HOME")});
    label.resize(ActionLabels::room, 20);
    const QStringList parts = label.shownText().split(QStringLiteral(" | "));
    QCOMPARE(parts.size(), 2);
    QVERIFY2(parts.at(0).endsWith(QLatin1String("SCN")), qPrintable(label.shownText()));
    QVERIFY2(parts.at(1).endsWith(QLatin1String("HOME")), qPrintable(label.shownText()));
    // Names keep their beginnings.
    label.setParts({QStringLiteral("A NAME FAR LONGER THAN THE ROOM THAT THERE IS")});
    QVERIFY(label.shownText().startsWith(QLatin1String("A NAME FAR")));
}

void tst_ComboMenu::tellsWholeWhatItsLabelsCut()
{
    MenuRig rig(3);
    rig.menu().loadShorcut(1, 17, 44, -1, QStringLiteral("Ctrl + PrtScn"));
    QCOMPARE(rig.menu().cutLabels(), QStringList());
    rig.menu().loadShorcut(1, 17, 18, 44, QStringLiteral("Ctrl + Alt + PrtScn"));
    rig.menu().loadShorcut(2, 17, 18, 33, QStringLiteral("Ctrl + Alt + PgUp"));
    QCOMPARE(rig.menu().cutLabels(), (QStringList{QStringLiteral("Button 3, Shift 1: Ctrl + Alt + PrtScn"),
                                                  QStringLiteral("Button 3, Shift 2: Ctrl + Alt + PgUp")}));
}

void tst_ComboMenu::labelsAndPicturesAreInPlace()
{
    const ComboMenu &menu = m_rig->menu();
    QCOMPARE(menu.size(), QSize(160, 40));
    struct Row {
        QRect place;
        QString style;
        int pointSize;
        int weight;
    };
    const QVector<Row> rows{
        {{0, 0, 160, 40}, QStringLiteral("background-image: url(:/icons/comboboarder.png);"), 0, 0},
        {{142, 18, 13, 7}, QStringLiteral("background-image: url(:/icons/comboarrow.png);"), 0, 0},
        {{10, 0, 150, 20},
         QStringLiteral("QLabel { color : rgba(255,255,255,1);  background-color: rgba(0,0,0,0);}"),
         12,
         75},
        {{10, 20, 150, 20},
         QStringLiteral("QLabel { color : rgba(255,255,255,0.87);  background-color: rgba(0,0,0,0);}"),
         10,
         50},
    };
    const QList<QLabel *> labels = menu.findChildren<QLabel *>();
    QCOMPARE(labels.size(), rows.size());
    for (int i = 0; i < rows.size(); ++i) {
        QCOMPARE(labels.at(i)->geometry(), rows.at(i).place);
        QCOMPARE(labels.at(i)->styleSheet(), rows.at(i).style);
        if (rows.at(i).pointSize > 0) {
            QCOMPARE(labels.at(i)->font().family(), QStringLiteral("Segoe UI"));
            QCOMPARE(labels.at(i)->font().pointSize(), rows.at(i).pointSize);
            QCOMPARE(labels.at(i)->font().weight(), rows.at(i).weight);
        }
    }
    QCOMPARE(title()->text(), QString());
    QCOMPARE(layers()->text(), QStringLiteral(" | "));
    for (const char *picture : {":/icons/comboboarder.png", ":/icons/comboarrow.png"}) {
        QVERIFY(!QImage(QLatin1String(picture)).isNull());
    }
}

void tst_ComboMenu::theMenuHasItsEntriesInOrder()
{
    QStringList top;
    QStringList entries[3];
    PopUp::whenOpen([&] {
        const QMenu &menu = *PopUp::active();
        top = PopUp::texts(menu);
        for (int layer = 0; layer < 3; ++layer) {
            entries[layer] = PopUp::texts(*menu.actions().at(2 * layer)->menu());
        }
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(top, (QStringList{normal, QStringLiteral("-"), shift1, QStringLiteral("-"), shift2}));
    QStringList expected{QStringLiteral("Shortcut Key"),
                         QStringLiteral("Midi"),
                         QStringLiteral("-"),
                         QStringLiteral("Monitor Left"),
                         QStringLiteral("Monitor Right"),
                         QStringLiteral("- Knob"),
                         QStringLiteral("Horizontal"),
                         QStringLiteral("Vertical"),
                         QStringLiteral("Circular"),
                         QStringLiteral(" \u2193  \u2191 Key"),
                         QStringLiteral("\u2190 \u2192 Key"),
                         QStringLiteral("Midi for Knob")};
    QCOMPARE(entries[1], expected);
    QCOMPARE(entries[2], expected);
    expected += {QStringLiteral("-"), shift1, shift2};
    QCOMPARE(entries[0], expected);
}

void tst_ComboMenu::theLayersAreShownInUpperCase()
{
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("Undo")));
    m_rig->menu().getShorcut(1, keys(17, 67, QStringLiteral("copy")));
    m_rig->menu().getShorcut(2, keys(17, 86, QStringLiteral("Paste")));
    QCOMPARE(title()->text(), QStringLiteral("UNDO"));
    QCOMPARE(layers()->text(), QStringLiteral("COPY | PASTE"));
}

void tst_ComboMenu::aShift1ChoiceKeepsTheRestOfTheLayerLabel()
{
    m_rig->menu().getShorcut(2, keys(17, 86, QStringLiteral("Paste")));
    QCOMPARE(layers()->text(), QStringLiteral(" | PASTE"));
    m_rig->menu().getShorcut(1, keys(17, 67, QStringLiteral("a|b")));
    QCOMPARE(layers()->text(), QStringLiteral("A|B | PASTE"));
    m_rig->menu().getShorcut(2, keys(17, 86, QStringLiteral("c")));
    QCOMPARE(layers()->text(), QStringLiteral("A|B | C"));
    chooseFrom({shift1, QStringLiteral("Circular")});
    QCOMPARE(layers()->text(), QStringLiteral("CIRCULAR | C"));
    QCOMPARE(title()->text(), QString());
}

void tst_ComboMenu::aMappingsMonitorsShowAsChosenOnes()
{
    m_rig->menu().getShorcut(0, special(SpecialAction::MonitorLeft, QStringLiteral("monitor left")));
    m_rig->menu().getShorcut(1, special(SpecialAction::MonitorRight, QStringLiteral("Monitor Right")));
    QCOMPARE(title()->text(), QStringLiteral("M.LEFT"));
    QCOMPARE(layers()->text(), QStringLiteral("M.RIGHT | "));
    QCOMPARE(m_rig->menu().assignment(Layer::Normal).label,
             QStringLiteral("monitor left")); // kept as it came
}

void tst_ComboMenu::anEndlessLabelIsCutAndSaidInFullByTheToolTip()
{
    const QString endless = QStringLiteral("Ctrl + Shift + Alt + Backspace and so on");
    for (int layer = 0; layer < 3; ++layer) {
        m_rig->menu().getShorcut(layer, keys(17, 90, endless));
    }
    QCOMPARE(title()->text(), endless.toUpper());
    const QFontMetrics metrics(layers()->font());
    QVERIFY(title()->shownText().size() < endless.size());
    QVERIFY(metrics.horizontalAdvance(layers()->shownText()) <= ActionLabels::room);
    QVERIFY(!ActionLabels::fit(endless, endless, endless));
    // Both layers have their share.
    const QStringList parts = layers()->shownText().split(QStringLiteral(" | "));
    QCOMPARE(parts.size(), 2);
    QVERIFY2(parts.at(0).endsWith(QLatin1String("ON")) && parts.at(1).endsWith(QLatin1String("ON")),
             qPrintable(layers()->shownText()));
    QVERIFY(m_rig->menu().toolTip().contains(endless));
    // A short one leaves its room to the other.
    m_rig->menu().getShorcut(2, keys(17, 90, QStringLiteral("x")));
    QVERIFY(layers()->shownText().endsWith(QLatin1String(" | X")));
    QVERIFY(layers()->shownText().size() > parts.at(0).size() + 8);
}

void tst_ComboMenu::mappingsLabelsAreNoMarkup()
{
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("<b>bold</b>")));
    QCOMPARE(title()->textFormat(), Qt::PlainText);
    QVERIFY(m_rig->menu().toolTip().contains(QLatin1String("&lt;b&gt;bold")));
}

void tst_ComboMenu::closingTheMenuChangesNothing()
{
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("Undo")));
    m_rig->takeAssignments();
    PopUp::whenOpen([] {});
    m_rig->menu().dislayMenu();
    QCOMPARE(title()->text(), QStringLiteral("UNDO"));
    QCOMPARE(m_rig->assignments(), QStringList());
}

void tst_ComboMenu::theCheckMarkShowsWhatTheLayerDoes_data()
{
    QTest::addColumn<int>("key1");
    QTest::addColumn<int>("key2");
    QTest::addColumn<QString>("entry");
    QTest::newRow("nothing yet") << 0 << 0 << QString();
    QTest::newRow("empty") << 0x1FFFFFF << 0 << QString();
    QTest::newRow("unknown code") << 0x1FFFFFF << 12 << QString();
    QTest::newRow("shortcut") << 17 << 90 << QStringLiteral("Shortcut Key");
    QTest::newRow("left") << 0x1FFFFFF << 2 << QStringLiteral("Monitor Left");
    QTest::newRow("down up") << 0x1FFFFFF << 8 << QStringLiteral(" \u2193  \u2191 Key");
    QTest::newRow("shift 2") << 0x1FFFFFF << 10 << shift2;
    QTest::newRow("midi") << 0x1001262 << 0 << QStringLiteral("Midi");
    QTest::newRow("midi for the knob") << 0x1001261 << 0 << QStringLiteral("Midi for Knob");
}

void tst_ComboMenu::theCheckMarkShowsWhatTheLayerDoes()
{
    QFETCH(int, key1);
    QFETCH(int, key2);
    QFETCH(QString, entry);
    m_rig->menu().getShorcut(1, keys(17, 90, QStringLiteral("Undo")));
    m_rig->menu().getShorcut(0, keys(key1, key2, QStringLiteral("some label"))); // which decides nothing
    QStringList checked[2];
    PopUp::whenOpen([&] {
        for (int layer = 0; layer < 2; ++layer) {
            const QList<QAction *> actions = PopUp::active()->actions().at(2 * layer)->menu()->actions();
            for (const QAction *action : actions) {
                if (action->isChecked()) {
                    checked[layer].append(action->text());
                }
            }
        }
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(checked[0], entry.isEmpty() ? QStringList() : QStringList{entry});
    QCOMPARE(checked[1], QStringList{QStringLiteral("Shortcut Key")});
}

void tst_ComboMenu::aChoiceThatOnlyOpensADialogMovesNoCheckMark()
{
    chooseFrom({normal, QStringLiteral("Vertical")});
    chooseFrom({normal, QStringLiteral("Midi")});
    chooseFrom({normal, QStringLiteral("Vertical")}); // choosing it again does not take it away
    QStringList checked;
    PopUp::whenOpen([&] {
        const QList<QAction *> actions = PopUp::active()->actions().first()->menu()->actions();
        for (const QAction *action : actions) {
            if (action->isChecked()) {
                checked.append(action->text());
            }
        }
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(checked, QStringList{QStringLiteral("Vertical")});
}

void tst_ComboMenu::theMenuOpensBelowAndDimsTheBar()
{
    auto *dimming = qobject_cast<QGraphicsOpacityEffect *>(m_rig->menu().graphicsEffect());
    QVERIFY(dimming);
    QCOMPARE(dimming->opacity(), 0.5);
    QVERIFY(!dimming->isEnabled());
    for (int i = 0; i < 2; ++i) {
        bool dimmed = false;
        QPoint place;
        PopUp::whenOpen([&] {
            dimmed = dimming->isEnabled();
            place = PopUp::active()->pos();
        });
        m_rig->menu().dislayMenu();
        QVERIFY(dimmed);
        QVERIFY(!dimming->isEnabled());
        QCOMPARE(place, m_rig->menu().mapToGlobal(QPoint(0, 40)));
    }
}

void tst_ComboMenu::theKeyboardOpensTheMenu()
{
    QVERIFY(m_rig->menu().focusPolicy() & Qt::TabFocus);
    int opened = 0;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        PopUp::whenOpen([&] { ++opened; });
        QTest::keyClick(&m_rig->menu(), key);
    }
    PopUp::whenOpen([&] { ++opened; });
    QTest::mousePress(&m_rig->menu(), Qt::LeftButton);
    QCOMPARE(opened, 4);
    QTest::mousePress(&m_rig->menu(), Qt::RightButton); // would wait here for ever
}

void tst_ComboMenu::aClickOnTheBarOfTheOpenMenuDoesNotReopenIt()
{
    int opened = 0;
    PopUp::whenOpen([&] {
        ++opened;
        m_rig->menu().dislayMenu(); // as the replayed click does
    });
    m_rig->menu().dislayMenu();
    QCOMPARE(opened, 1);
}

void tst_ComboMenu::hidingThePageClosesTheMenu()
{
    bool open = true;
    QTimer::singleShot(0, [&] {
        m_rig->page().hide();
        open = QApplication::activePopupWidget() != nullptr;
    });
    m_rig->menu().dislayMenu();
    QVERIFY(!open);
}

void tst_ComboMenu::screenReadersAreToldWhatItIs()
{
    QCOMPARE(m_rig->menu().accessibleName(), QStringLiteral("Button 3"));
    m_rig->menu().getShorcut(0, keys(17, 90, QStringLiteral("Undo")));
    m_rig->menu().getShorcut(1, special(SpecialAction::MonitorLeft, QStringLiteral("M.Left")));
    QCOMPARE(m_rig->menu().inWords(Layer::Normal), QStringLiteral("Undo: presses Ctrl + Z"));
    QCOMPARE(m_rig->menu().inWords(Layer::Shift1), QStringLiteral("Moves the pointer to the next monitor"));
    QCOMPARE(m_rig->menu().inWords(Layer::Shift2), QStringLiteral("Nothing yet"));
    for (const Layer layer : Layers::all) {
        QVERIFY(m_rig->menu().accessibleDescription().contains(m_rig->menu().inWords(layer)));
        QVERIFY(m_rig->menu().toolTip().contains(m_rig->menu().inWords(layer)));
    }
}

void tst_ComboMenu::screenReadersOpenTheMenu()
{
    QAccessibleInterface *bar = QAccessible::queryAccessibleInterface(&m_rig->menu());
    QCOMPARE(bar->role(), QAccessible::ButtonMenu);
    QVERIFY(bar->state().hasPopup && bar->state().focusable);
    QCOMPARE(bar->text(QAccessible::Name), QStringLiteral("Button 3"));
    QVERIFY(bar->text(QAccessible::Description).contains(QLatin1String("Normal: ")));
    QCOMPARE(bar->childCount(), 0);
    QVERIFY(bar->actionInterface()->actionNames().contains(QAccessibleActionInterface::showMenuAction()));

    bar->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QVERIFY(!QApplication::activePopupWidget()); // it has come back at once
    bool opened = false;
    QTimer::singleShot(0, [&] {
        opened = QApplication::activePopupWidget() != nullptr;
        QApplication::activePopupWidget()->close();
    });
    QCoreApplication::processEvents();
    QTRY_VERIFY(opened);
}

QTEST_MAIN(tst_ComboMenu)
#include "tst_ComboMenu.moc"
