#include "MenusOnServer.h"
#include "app/frame/ActionLabels.h"
#include "tests/support/main/Main.h"
#include "tests/support/xserver/RunOnServer.h"
#include "tests/unit/ui_menus/PopUp.h"
#include "ui/ComboMenuLabel.h"
#include "ui/SaveDialog.h"

#include <QElapsedTimer>
#include <QProxyStyle>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <functional>

namespace
{

constexpr int longList = 1000;

// Keycodes of a PC keyboard on X11.
enum Keycode { TabKey = 23, ReturnKey = 36, MKey = 58, BlankKey = 65, RightKey = 114, DownKey = 116 };

// What else the machine does can only make it longer.
double least(const QVector<double> &times)
{
    return *std::min_element(times.begin(), times.end());
}

/// A menu that scrolls, and nothing else.
class ScrollingStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override
    {
        return hint == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

// Until it is on the screen and painted, in milliseconds.
double timeToOpen(QMenu &menu)
{
    QElapsedTimer timer;
    timer.start();
    menu.popup(QPoint(10, 10));
    while (!menu.windowHandle()->isExposed() && timer.elapsed() < 5000) {
        QCoreApplication::processEvents();
    }
    menu.repaint();
    const double time = double(timer.nsecsElapsed()) / 1e6;
    menu.close();
    QCoreApplication::processEvents();
    return time;
}

} // namespace

/// The menus on a real X server, with the user's mouse and keyboard.
class tst_Menus : public QObject, private MenusOnServer
{
    Q_OBJECT

public:
    explicit tst_Menus(const XServer &server)
        : MenusOnServer(server)
    {
    }

private Q_SLOTS:
    void initTestCase() { beginAll(); }
    void init() { begin(); }
    void cleanup() { end(); }

    void theMouseChoosesAnAction();
    void theKeyboardChoosesAnAction();
    void aClickOnTheOpenMenusBarClosesIt();
    void theSelectorAndItsDialogSaveByMouse();
    void aLongListOpensQuickly();
    void aLongListScrollsToItsEnd();
    void aNotchOfTheWheelScrollsByThreeEntriesAndOpensNone();
    void noTextLeavesItsBar();
    void aLabelIsCutExactlyWhereItIsSaidNotToFit();

private:
    QList<ZRButtonMap *> maps(int count) const;
    void press(const QPoint &global);
    void click(const QPoint &global);
    void clickEntry(const QString &text);
    void whenOpen(const std::function<void()> &then);
};

QList<ZRButtonMap *> tst_Menus::maps(int count) const
{
    QList<ZRButtonMap *> list;
    for (int i = 0; i < count; ++i) {
        list.append(new ZRButtonMap(QStringLiteral("Mapping %1").arg(i)));
    }
    return list;
}

void tst_Menus::press(const QPoint &global)
{
    const qreal scale = m_page->devicePixelRatioF();
    m_user->moveMouse((QPointF(global) * scale).toPoint());
    m_user->mouseButton(true);
}

void tst_Menus::click(const QPoint &global)
{
    press(global);
    m_user->mouseButton(false);
}

void tst_Menus::clickEntry(const QString &text)
{
    QTRY_VERIFY(PopUp::active() && PopUp::entry(*PopUp::active(), text));
    QMenu *menu = PopUp::active();
    QTRY_VERIFY(menu->windowHandle()->isExposed());
    const QAction *entry = PopUp::entry(*menu, text);
    click(menu->mapToGlobal(menu->actionGeometry(const_cast<QAction *>(entry)).center()));
    if (entry->menu()) {
        QTRY_COMPARE(PopUp::active(), entry->menu());
    }
}

// The menu runs in an event loop of its own: what the user does there has to come from within.
void tst_Menus::whenOpen(const std::function<void()> &then)
{
    auto *poll = new QTimer(m_page.get());
    poll->setInterval(5);
    connect(poll, &QTimer::timeout, this, [poll, then] {
        if (PopUp::active()) {
            poll->deleteLater();
            poll->stop();
            then();
        }
    });
    poll->start();
}

void tst_Menus::theMouseChoosesAnAction()
{
    int changed = 0;
    connect(m_menus.at(6), &ComboMenu::assignmentChanged, this, [&changed] { ++changed; });
    bool opened = false;
    whenOpen([&] {
        opened = true;
        clickEntry(QStringLiteral("Shift 1"));
        clickEntry(QStringLiteral("Vertical"));
    });
    click(m_menus.at(6)->mapToGlobal(QPoint(60, 30)));
    QTRY_VERIFY(opened && !PopUp::active());
    QTRY_COMPARE(changed, 1);
    QCOMPARE(m_menus.at(6)->assignment(Layer::Shift1).label, QStringLiteral("Vertical"));
}

void tst_Menus::theKeyboardChoosesAnAction()
{
    bool opened = false;
    whenOpen([&] {
        opened = true;
        m_user->tap(DownKey); // Normal
        m_user->tap(RightKey);
        QTRY_VERIFY(PopUp::active() && PopUp::active()->actions().size() > 5);
        m_user->tap(DownKey);
        m_user->tap(DownKey);
        m_user->tap(ReturnKey);
    });
    const auto *frame = m_menus.at(1)->findChild<QWidget *>(QStringLiteral("focus"));
    QVERIFY(frame);
    m_menus.at(0)->setFocus(Qt::ActiveWindowFocusReason);
    QVERIFY(!m_menus.at(0)->findChild<QWidget *>(QStringLiteral("focus"))->isVisible());
    m_user->tap(TabKey);
    QTRY_VERIFY(m_menus.at(1)->hasFocus());
    QVERIFY(frame->isVisible());
    m_user->tap(BlankKey);
    QTRY_VERIFY(opened && !PopUp::active());
    QTRY_COMPARE(m_menus.at(1)->assignment(Layer::Normal).label, QStringLiteral("M.Left"));
}

void tst_Menus::aClickOnTheOpenMenusBarClosesIt()
{
    int opened = 0;
    whenOpen([&] {
        ++opened;
        QTRY_VERIFY(PopUp::active()->windowHandle()->isExposed());
        whenOpen([&] { ++opened; }); // the first is still open: counted at once
        click(m_menus.at(0)->mapToGlobal(QPoint(60, 10)));
        QTRY_VERIFY(!PopUp::active());
        whenOpen([&] { ++opened; });
        QTest::qWait(200);
    });
    click(m_menus.at(0)->mapToGlobal(QPoint(60, 10)));
    QTRY_VERIFY(opened > 0);
    QTRY_VERIFY(!PopUp::active());
    QTest::qWait(200);
    QVERIFY(!PopUp::active());
    QVERIFY(opened <= 2);
}

void tst_Menus::theSelectorAndItsDialogSaveByMouse()
{
    QSignalSpy saved(m_selector, &ComboMapping::saveCurrentMap);
    bool opened = false;
    whenOpen([&] {
        opened = true;
        clickEntry(QStringLiteral("Save"));
    });
    click(m_selector->mapToGlobal(QPoint(80, 25)));
    SaveDialog *dialog = m_selector->saveDialog();
    QTRY_VERIFY(opened && dialog->isVisible());
    QTRY_COMPARE(QWidget::mouseGrabber(), dialog);
    QTRY_VERIFY(m_user->mouseIsTaken());

    click(m_page->mapToGlobal(QPoint(100, 260))); // an action menu, behind the dialog
    QTest::qWait(50);
    QVERIFY(dialog->isVisible());
    QVERIFY(!PopUp::active());
    QCOMPARE(saved.size(), 0);

    const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
    const auto ok = std::find_if(labels.begin(), labels.end(), [](const QLabel *label) {
        return label->styleSheet().contains(QLatin1String("ok_0"));
    });
    QVERIFY(ok != labels.end());
    click((*ok)->mapToGlobal((*ok)->rect().center()));
    QTRY_COMPARE(saved.size(), 1);
    QCOMPARE(saved.at(0).at(0).toString(), QStringLiteral("Untitled"));
    QTRY_VERIFY(!m_user->mouseIsTaken());
}

void tst_Menus::aLongListOpensQuickly()
{
    QVector<double> ours;
    QVector<double> bare;
    for (int round = 0; round < 12; ++round) { // a new list each time: what was measured once is kept by Qt
        m_selector->newMapListReady(maps(longList), false, 0);
        PopUp::whenOpen([&] {
            // The list is made with the menu; a user gets to it later than what that has left to be done.
            QCoreApplication::sendPostedEvents();
            ours.append(timeToOpen(*PopUp::active()->actions().first()->menu()));
        });
        m_selector->dislayMenu();

        ScrollingStyle style;
        QMenu menu;
        menu.setStyle(&style);
        for (int i = 0; i < longList; ++i) {
            menu.addAction(QStringLiteral("Mapping %1").arg(i));
        }
        bare.append(timeToOpen(menu));
    }
    qInfo("a list of %d opens in %.1f ms, a bare menu in %.1f ms", longList, least(ours), least(bare));
    QVERIFY(least(ours) <= 1.5 * least(bare));
}

void tst_Menus::aLongListScrollsToItsEnd()
{
    m_selector->newMapListReady(maps(longList), false, 0);
    QRect list;
    QRect last;
    PopUp::whenOpen([&] {
        QMenu *examples = PopUp::active()->actions().first()->menu();
        examples->popup(QPoint(10, 10));
        QTRY_VERIFY(examples->windowHandle()->isExposed());
        list = examples->geometry();
        QTest::keyClick(examples, Qt::Key_Up); // from nowhere to the last
        QTest::keyClick(examples, Qt::Key_Down);
        QTest::keyClick(examples, Qt::Key_Up);
        QCOMPARE(examples->activeAction()->text(), QStringLiteral("Mapping 999"));
        last = examples->actionGeometry(examples->activeAction());
    });
    m_selector->dislayMenu();
    QVERIFY(list.height() <= m_page->screen()->geometry().height());
    QVERIFY(list.width() < 400); // one column
    QVERIFY(QRect({0, 0}, list.size()).contains(last));
}

void tst_Menus::aNotchOfTheWheelScrollsByThreeEntriesAndOpensNone()
{
    m_selector->newMapListReady(maps(100), false, 0);
    bool opened = false;
    whenOpen([&] {
        opened = true;
        clickEntry(QStringLiteral("Examples"));
        QMenu *list = PopUp::active();
        QTRY_VERIFY(list->windowHandle()->isExposed());
        const QList<QAction *> all = list->actions();
        const auto top = [&](int entry) { return list->actionGeometry(all.at(2 * entry)).top(); };
        const int height = top(11) - top(10);
        const QPoint resting = list->mapToGlobal(list->actionGeometry(all.at(20)).center());
        const auto moveTo = [&](const QPoint &place) {
            m_user->moveMouse((QPointF(place) * m_page->devicePixelRatioF()).toPoint());
            QTest::qWait(20);
        };
        for (const int left : {3, 2, 1, 0}) { // a menu takes no notice of the first
            moveTo(resting - QPoint(left, 0));
        }
        QTRY_COMPARE(PopUp::active(), all.at(20)->menu()); // it has come to rest, and an entry's menu opens
        for (int notch = 0; notch < 4; ++notch) {
            const int before = top(10);
            m_user->wheel(true);
            QTRY_VERIFY(top(10) != before);
            QTest::qWait(400); // a menu would open after 225 ms
            QCOMPARE(PopUp::active(), list);
            if (notch > 0) { // the first also makes room for the arrow that leads back
                QCOMPARE(before - top(10), 3 * height);
            }
        }
        for (int notch = 0; notch < 2; ++notch) {
            const int before = top(10);
            m_user->wheel(false);
            QTRY_VERIFY(top(10) != before);
            if (notch > 0) { // the first brings an entry to the edge
                QCOMPARE(top(10) - before, 3 * height);
            }
        }
        for (const int right : {1, 2, 3}) {
            moveTo(resting + QPoint(right, 0));
        }
        QTRY_VERIFY(PopUp::active() != list); // it moves again

        // What is typed stays chosen, although the mouse is over another entry whose menu was open.
        m_user->tap(MKey);
        QTRY_COMPARE(PopUp::active(), list);
        const QAction *typed = list->activeAction();
        QTest::qWait(1500);
        QCOMPARE(list->activeAction(), typed);
        QCOMPARE(PopUp::active(), list);
        while (PopUp::active()) {
            PopUp::active()->close();
        }
    });
    click(m_selector->mapToGlobal(QPoint(80, 25)));
    QTRY_VERIFY(opened && !PopUp::active());
}

void tst_Menus::noTextLeavesItsBar()
{
    const QString endless(60, QLatin1Char('W'));
    shortCut record;
    record.key1 = 65;
    record.label = endless;
    for (ComboMenu *menu : qAsConst(m_menus)) {
        for (const Layer layer : Layers::all) {
            menu->getShorcut(Layers::number(layer), record);
        }
        const QList<ComboMenuLabel *> labels = menu->findChildren<ComboMenuLabel *>();
        for (const ComboMenuLabel *label : labels) {
            const QFontMetrics metrics(label->font());
            QVERIFY(label->x() + metrics.horizontalAdvance(label->shownText()) <= 142); // the arrow
            // The lines are higher than the labels; the letters are not.
            const QRect letters = metrics.tightBoundingRect(QStringLiteral("QJ|,"));
            const int baseline = (label->height() - metrics.height()) / 2 + metrics.ascent();
            QVERIFY(baseline + letters.top() >= 0);
            QVERIFY(baseline + letters.bottom() <= label->height());
        }
    }
}

void tst_Menus::aLabelIsCutExactlyWhereItIsSaidNotToFit()
{
    ComboMenu &menu = *m_menus.first();
    const QList<ComboMenuLabel *> lines = menu.findChildren<ComboMenuLabel *>();
    QCOMPARE(lines.size(), 2);
    shortCut record;
    record.key1 = 65;
    const auto isCut = [&](const QString &normal, const QString &shifted) {
        const QString labels[] = {normal, shifted, shifted};
        for (int layer = 0; layer < 3; ++layer) {
            record.label = labels[layer];
            menu.getShorcut(layer, record);
        }
        return std::any_of(lines.begin(), lines.end(),
                           [](const ComboMenuLabel *line) { return line->shownText() != line->text(); });
    };
    for (const char letter : {'i', 'm', 'x'}) {
        for (int length = 1; length < 40; ++length) {
            const QString label(length, QLatin1Char(letter));
            QCOMPARE(ActionLabels::fit(label, QString(), QString()), !isCut(label, QString()));
            QCOMPARE(ActionLabels::fit(QString(), label, label), !isCut(QString(), label));
        }
    }
    QVERIFY(isCut(QStringLiteral("Tile to the right"), QString()));
}

int main(int argc, char *argv[])
{
    return runOnServer<tst_Menus>(argc, argv, XServer::Options::atScale());
}

#include "tst_Menus.moc"
