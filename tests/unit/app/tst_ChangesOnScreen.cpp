#include "app/frame/AppFonts.h"
#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "tests/support/page/PageRig.h"
#include "ui/ChangesOnScreen.h"
#include "ui/ComboMenuEntries.h"
#include "ui/ScreenNote.h"

#include <QApplication>
#include <QCheckBox>
#include <QTest>

namespace
{

constexpr int aFewFrames = 100; // ms

shortCut special(SpecialAction code)
{
    shortCut action;
    action.key1 = SPECIAL_ACTION;
    action.key2 = static_cast<qint32>(code);
    return action;
}

} // namespace

/// What shows on the screen while the user works in another program, and when.
class tst_ChangesOnScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { AppFonts::load(); }
    void init();
    void cleanup();

    void itIsOffUntilTheBoxIsSet();
    void aChangeShowsWhileTheWindowIsHidden();
    void nothingShowsWhileTheWindowIsActive();
    void aButtonThatChangesNothingShowsNothing();
    void whatTheDeviceDoesWaitsForNoNote();
    void theKnobsModesAreCalledAsOnThePage();
    void theChoiceIsThereAtTheNextStart();

private:
    void makePage()
    {
        m_page = m_rig->makePage(m_window.get(), m_serial.get(), nullptr);
        for (const Layer layer : Layers::all) {
            m_rig->mappings.assign(3, layer, special(SpecialAction::Shift1));
        }
        m_rig->mappings.assign(4, Layer::Normal, special(SpecialAction::Vertical));
    }
    QCheckBox *box() const { return m_page->findChild<QCheckBox *>(QStringLiteral("showChanges")); }
    void press(int button) { m_rig->engine.dispatcher->onButtonpress(button, true); }
    void release(int button) { m_rig->engine.dispatcher->onButtonpress(button, false); }
    /// What is shown; nothing when there is no note.
    static QString shown() { return text(true); }
    /// What was shown last, also when it is gone already: on a busy machine it may be.
    static QString said() { return text(false); }
    static QString text(bool stillVisible)
    {
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            const auto *note = qobject_cast<const ScreenNote *>(window);
            if (note && (note->isVisible() || !stillVisible)) {
                return note->text();
            }
        }
        return QString();
    }

    std::unique_ptr<PageRig> m_rig;
    std::unique_ptr<SerialProtocol> m_serial;
    std::unique_ptr<QWidget> m_window;
    DeviceZR *m_page = nullptr;
};

void tst_ChangesOnScreen::init()
{
    m_rig = std::make_unique<PageRig>();
    m_serial = PageRig::makeSerial();
    m_window = std::make_unique<QWidget>();
    makePage();
}

void tst_ChangesOnScreen::cleanup()
{
    m_window.reset();
    m_serial.reset();
    m_rig.reset();
}

void tst_ChangesOnScreen::itIsOffUntilTheBoxIsSet()
{
    QVERIFY(!box()->isChecked());
    QCOMPARE(box()->text(), QStringLiteral("Show changes on screen"));
    press(3);
    QTest::qWait(aFewFrames);
    QCOMPARE(shown(), QString());
    release(3);
}

void tst_ChangesOnScreen::aChangeShowsWhileTheWindowIsHidden()
{
    box()->setChecked(true);
    press(4);
    QTRY_COMPARE(shown(), QStringLiteral("Normal · Vertical"));
    release(4);
    press(3);
    QTRY_COMPARE(said(), QStringLiteral("Shift 1 · Vertical"));
    release(3);
    QTRY_COMPARE(said(), QStringLiteral("Normal · Vertical"));
    QTRY_COMPARE_WITH_TIMEOUT(shown(), QString(), 2000);

    press(3);
    box()->setChecked(false); // at once
    release(3);
    QTest::qWait(aFewFrames);
    QCOMPARE(shown(), QString());
}

void tst_ChangesOnScreen::nothingShowsWhileTheWindowIsActive()
{
    box()->setChecked(true);
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    press(3);
    QTest::qWait(aFewFrames);
    QCOMPARE(shown(), QString());
    release(3);
    QApplication::setActiveWindow(nullptr);
    press(3);
    QTRY_COMPARE(said(), QStringLiteral("Shift 1 · Circular"));
    release(3);
}

void tst_ChangesOnScreen::aButtonThatChangesNothingShowsNothing()
{
    box()->setChecked(true);
    press(5);
    release(5);
    QTest::qWait(aFewFrames);
    QCOMPARE(shown(), QString());
}

void tst_ChangesOnScreen::whatTheDeviceDoesWaitsForNoNote()
{
    box()->setChecked(true);
    press(4);
    QCOMPARE(shown(), QString()); // a window takes the server's time, and the next report may be there
    press(3);
    QCOMPARE(shown(), QString());
    QTRY_COMPARE(said(), QStringLiteral("Shift 1 · Vertical")); // both at once
    release(3);
    release(4);
}

void tst_ChangesOnScreen::theKnobsModesAreCalledAsOnThePage()
{
    box()->setChecked(true);
    const struct {
        SpecialAction action;
        KnobMode mode;
    } rows[] = {{SpecialAction::UpDownKeys, KnobMode::UpDownKeys},
                {SpecialAction::LeftRightKeys, KnobMode::LeftRightKeys},
                {SpecialAction::Horizontal, KnobMode::Horizontal}};
    for (const auto &row : rows) {
        m_rig->mappings.assign(4, Layer::Normal, special(row.action));
        press(4);
        release(4);
        const QString name = ComboMenuEntries::knobMode(row.mode);
        QVERIFY(!name.isEmpty());
        QTRY_COMPARE(said(), QStringLiteral("Normal · ") + name);
    }
}

void tst_ChangesOnScreen::theChoiceIsThereAtTheNextStart()
{
    box()->setChecked(true);
    QVERIFY(m_rig->store.value(QStringLiteral("Extra.ShowChangesOnScreen")).toBool());
    delete m_page;
    makePage();
    QVERIFY(box()->isChecked());
}

QTEST_MAIN(tst_ChangesOnScreen)
#include "tst_ChangesOnScreen.moc"
