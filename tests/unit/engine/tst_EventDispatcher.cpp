#include "mapping/SpecialAction.h"
#include "mapping/ZRButtonMap.h"
#include "tests/support/main/Main.h"
#include "tests/support/script/EngineRig.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace
{

shortCut keys(qint32 key1, qint32 key2 = -1, qint32 key3 = -1)
{
    shortCut action;
    action.key1 = key1;
    action.key2 = key2;
    action.key3 = key3;
    return action;
}

shortCut special(int code)
{
    shortCut action;
    action.key1 = SPECIAL_ACTION;
    action.key2 = code;
    return action;
}

shortCut special(SpecialAction code)
{
    return special(static_cast<int>(code));
}

QStringList lines(std::initializer_list<const char *> texts)
{
    QStringList all;
    for (const char *text : texts) {
        all.append(QString::fromLatin1(text));
    }
    return all;
}

} // namespace

/// What the text scripts do not reach: signals for the page, maps as a whole, the end of the program.
class tst_EventDispatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsInNormalAndCircularAndWithoutGame();
    void setMapCopiesEveryEntry();
    void aMapMayBeDeletedOnceSet();
    void setMapTellsWhichKeysWillBeWanted();
    void setActionIgnoresWhatDoesNotExist();
    void ignoresButtonsOutsideZeroToNine();
    void saysWhichButtonIsHeld();
    void saysThatTheKnobIsTouchedAndTurned();
    void clearsTheIndicatorsWhenLetGoInTheGame();
    void unknownSpecialCodesDoNothing_data();
    void unknownSpecialCodesDoNothing();
    void deviceLossClearsTheGameWithoutASignal();
    void deviceLossClearsTheIndicators();
    void theEndLetsControllersAndKeysGo();
    void theEndLetsTheKnobGoInMidiMode();
    void theEndSendsNothingForWhatIsNotHeld();
    void reEnableZRBeginsNoDragForAKnobThatNobodyTouches();
    void reEnableZRWithoutMouseMovementDoesNothing();
    void restoreMousePutsThePointerBack();
    void releaseEverythingReleasesKeysAndDrag();
    void releasesEverythingWhenDestroyed();
    void aSlotMayChangeTheMapping();
};

void tst_EventDispatcher::startsInNormalAndCircularAndWithoutGame()
{
    EngineRig rig;
    QCOMPARE(rig.dispatcher->currentLayer(), Layer::Normal);
    QCOMPARE(rig.dispatcher->knobMode(), KnobMode::Circular);
    QVERIFY(!rig.dispatcher->isGameOn());
    QVERIFY(rig.recorder.lines().isEmpty());
}

void tst_EventDispatcher::setMapCopiesEveryEntry()
{
    EngineRig rig;
    ZRButtonMap map(QStringLiteral("all different"));
    for (int button = 0; button < 10; ++button) {
        map.actions[button][Layer::Normal] = keys(100 + button);
        map.actions[button][Layer::Shift1] = keys(120 + button);
        map.actions[button][Layer::Shift2] = keys(140 + button);
    }
    rig.dispatcher->setActions(map.actions);
    for (int button = 0; button < 10; ++button) {
        rig.dispatcher->onButtonpress(button, true);
        rig.dispatcher->onButtonpress(button, false);
        QCOMPARE(rig.recorder.takeLines(), (QStringList{QStringLiteral("key %1 down").arg(100 + button),
                                                        QStringLiteral("key %1 up").arg(100 + button)}));
    }
    for (const Layer layer : {Layer::Shift1, Layer::Shift2}) {
        const auto shift = special(layer == Layer::Shift1 ? SpecialAction::Shift1 : SpecialAction::Shift2);
        for (int button = 0; button < 10; ++button) {
            const int shiftButton = (button + 1) % 10;
            rig.dispatcher->setActions(map.actions);
            rig.dispatcher->setAction(shiftButton, Layer::Normal, shift);
            rig.dispatcher->setAction(shiftButton, layer, shift);
            rig.dispatcher->onButtonpress(shiftButton, true);
            rig.dispatcher->onButtonpress(button, true);
            rig.dispatcher->onButtonpress(button, false);
            rig.dispatcher->onButtonpress(shiftButton, false);
            const int code = (layer == Layer::Shift1 ? 120 : 140) + button;
            QCOMPARE(rig.recorder.takeLines(), (QStringList{QStringLiteral("key %1 down").arg(code),
                                                            QStringLiteral("key %1 up").arg(code)}));
        }
    }
}

void tst_EventDispatcher::aMapMayBeDeletedOnceSet()
{
    EngineRig rig;
    auto map = std::make_unique<ZRButtonMap>(QStringLiteral("short-lived"));
    map->actions[0][Layer::Normal] = keys(65);
    rig.dispatcher->setActions(map->actions);
    map->actions[0][Layer::Normal] = keys(66);
    map.reset();
    rig.dispatcher->onButtonpress(0, true);
    QCOMPARE(rig.recorder.takeLines(), lines({"key 65 down"}));
}

void tst_EventDispatcher::setMapTellsWhichKeysWillBeWanted()
{
    EngineRig rig;
    ZRButtonMap map(QStringLiteral("keys"));
    map.actions[0][Layer::Normal] = keys(17, 0x10041, 124);
    map.actions[9][Layer::Shift2] = keys(65, -1, 0);
    map.actions[1][Layer::Normal] = special(SpecialAction::Shift1); // code 9 is no key
    map.actions[2][Layer::Normal].key1 = MIDI_BUTTON_ACTION;
    map.actions[2][Layer::Normal].key2 = 70;
    rig.dispatcher->setActions(map.actions);
    QVector<quint16> prepared = rig.injector.preparedKeys();
    std::sort(prepared.begin(), prepared.end());
    QCOMPARE(prepared, (QVector<quint16>{17, 0x25, 0x26, 0x27, 0x28, 65, 124}));

    rig.dispatcher->setAction(3, Layer::Shift1, keys(200));
    QVERIFY(rig.injector.preparedKeys().contains(200));
}

void tst_EventDispatcher::setActionIgnoresWhatDoesNotExist()
{
    EngineRig rig;
    rig.dispatcher->setAction(10, Layer::Normal, keys(65));
    rig.dispatcher->setAction(-1, Layer::Normal, keys(65));
    QVERIFY(!rig.injector.preparedKeys().contains(65));
}

void tst_EventDispatcher::ignoresButtonsOutsideZeroToNine()
{
    EngineRig rig;
    QSignalSpy held(rig.dispatcher.get(), &EventDispatcher::buttonHeld);
    for (int button : {-1, 10, 207, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        rig.dispatcher->onButtonpress(button, true);
    }
    QCOMPARE(held.count(), 0);
    QVERIFY(rig.recorder.lines().isEmpty());
}

void tst_EventDispatcher::saysWhichButtonIsHeld()
{
    EngineRig rig;
    QSignalSpy held(rig.dispatcher.get(), &EventDispatcher::buttonHeld);
    rig.dispatcher->onButtonpress(3, true);
    rig.dispatcher->onButtonpress(3, false);
    QCOMPARE(held.count(), 2);
    QCOMPARE(held.at(0), (QVariantList{3, true}));
    QCOMPARE(held.at(1), (QVariantList{3, false}));
}

void tst_EventDispatcher::saysThatTheKnobIsTouchedAndTurned()
{
    EngineRig rig;
    QStringList said;
    connect(rig.dispatcher.get(), &EventDispatcher::knobTouchShown, this,
            [&said](bool shown) { said << (shown ? QStringLiteral("touched") : QStringLiteral("free")); });
    connect(rig.dispatcher.get(), &EventDispatcher::turning, this,
            [&said](KnobPointer::Turn turn) { said << QVariant::fromValue(turn).toString(); });
    for (char type : {'D', 'L', 'R', 'S', '+', 'U'}) {
        rig.dispatcher->onKnobevent(type);
    }
    QCOMPARE(said, lines({"touched", "Left", "Right", "None", "None", "free"}));
}

void tst_EventDispatcher::clearsTheIndicatorsWhenLetGoInTheGame()
{
    EngineRig rig;
    rig.dispatcher->onKnobevent('D');
    rig.dispatcher->setAction(0, Layer::Normal, special(SpecialAction::Horizontal));
    rig.dispatcher->setAction(1, Layer::Normal, special(SpecialAction::Vertical));
    rig.dispatcher->setAction(2, Layer::Normal, special(SpecialAction::Circular));
    for (int button : {0, 1, 2}) {
        rig.dispatcher->onButtonpress(button, true);
    }
    QVERIFY(rig.dispatcher->isGameOn());
    QSignalSpy touch(rig.dispatcher.get(), &EventDispatcher::knobTouchShown);
    rig.dispatcher->onKnobevent('U');
    QCOMPARE(touch.count(), 1);
    QCOMPARE(touch.at(0).at(0).toBool(), false);
}

void tst_EventDispatcher::unknownSpecialCodesDoNothing_data()
{
    QTest::addColumn<int>("code");
    for (int code : {0, 1, 11, 12, 255, 256 + 2, -1, std::numeric_limits<int>::min()}) {
        QTest::addRow("%d", code) << code;
    }
}

void tst_EventDispatcher::unknownSpecialCodesDoNothing()
{
    QFETCH(int, code);
    EngineRig rig;
    rig.dispatcher->setAction(0, Layer::Normal, special(code));
    rig.dispatcher->onButtonpress(0, true);
    QCOMPARE(rig.dispatcher->currentLayer(), Layer::Normal);
    QCOMPARE(rig.dispatcher->knobMode(), KnobMode::Circular);
    rig.dispatcher->onButtonpress(0, false);
    QVERIFY(rig.recorder.lines().isEmpty());
}

void tst_EventDispatcher::deviceLossClearsTheGameWithoutASignal()
{
    EngineRig rig;
    rig.dispatcher->setAction(0, Layer::Normal, special(SpecialAction::Horizontal));
    rig.dispatcher->setAction(1, Layer::Normal, special(SpecialAction::Vertical));
    rig.dispatcher->setAction(2, Layer::Normal, special(SpecialAction::Circular));
    for (int button : {0, 1, 2}) {
        rig.dispatcher->onButtonpress(button, true);
    }
    QCOMPARE(rig.recorder.takeLines(), lines({"panel GAME"}));
    for (int button = 0; button < 10; ++button) {
        rig.dispatcher->onButtonpress(button, false);
    }
    rig.dispatcher->onDeviceLost();
    QVERIFY(!rig.dispatcher->isGameOn());
    QVERIFY(rig.recorder.takeLines().isEmpty());
}

void tst_EventDispatcher::deviceLossClearsTheIndicators()
{
    EngineRig rig;
    rig.dispatcher->onKnobevent('D');
    rig.dispatcher->onKnobevent('L');
    QSignalSpy touch(rig.dispatcher.get(), &EventDispatcher::knobTouchShown);
    QSignalSpy turn(rig.dispatcher.get(), &EventDispatcher::turning);
    rig.dispatcher->onDeviceLost();
    QCOMPARE(touch.last().at(0).toBool(), false);
    QCOMPARE(turn.last().at(0).value<KnobPointer::Turn>(), KnobPointer::Turn::None);
}

void tst_EventDispatcher::theEndLetsControllersAndKeysGo()
{
    EngineRig rig;
    shortCut controller{MIDI_BUTTON_ACTION, 0, 0, QString()};
    controller.channel = 1;
    controller.cc = 7;
    controller.v_on = 127;
    controller.v_off = 3;
    controller.v_off_enable = true;
    rig.dispatcher->setAction(0, Layer::Normal, controller);
    rig.dispatcher->setAction(1, Layer::Normal, shortCut{65, -1, -1, QString()});
    rig.dispatcher->onButtonpress(0, true);
    rig.dispatcher->onButtonpress(1, true);
    rig.recorder.takeLines();
    rig.dispatcher->letEverythingGo();
    QCOMPARE(rig.recorder.takeLines(), lines({"midi B0 07 03", "key 65 up"}));
    rig.dispatcher->letEverythingGo();
    QVERIFY(rig.recorder.takeLines().isEmpty());
}

void tst_EventDispatcher::theEndLetsTheKnobGoInMidiMode()
{
    EngineRig rig;
    shortCut knob{MIDI_KNOB_ACTION, 0, 0, QString()};
    knob.channel = 2;
    knob.cc = 9;
    knob.v_on = 127;
    knob.v_off = 5;
    knob.v_off_enable = true;
    rig.dispatcher->setAction(0, Layer::Normal, knob);
    rig.dispatcher->onButtonpress(0, true);
    rig.dispatcher->onButtonpress(0, false);
    rig.dispatcher->onKnobevent('D');
    QCOMPARE(rig.recorder.takeLines(), lines({"midi B1 09 7F"}));
    rig.dispatcher->letEverythingGo();
    QCOMPARE(rig.recorder.takeLines(), lines({"midi B1 09 05"}));
}

void tst_EventDispatcher::theEndSendsNothingForWhatIsNotHeld()
{
    EngineRig rig;
    shortCut controller{MIDI_BUTTON_ACTION, 0, 0, QString()};
    controller.cc = 7;
    controller.v_off_enable = true;
    rig.dispatcher->setAction(0, Layer::Normal, controller);
    rig.dispatcher->letEverythingGo();
    QVERIFY(rig.recorder.takeLines().isEmpty());
}

void tst_EventDispatcher::reEnableZRBeginsNoDragForAKnobThatNobodyTouches()
{
    EngineRig rig;
    rig.dispatcher->setAction(0, Layer::Normal, special(SpecialAction::Vertical));
    rig.dispatcher->setAction(1, Layer::Normal, shortCut{MIDI_KNOB_ACTION, 0, 0, QString()});
    rig.dispatcher->onButtonpress(0, true);
    rig.dispatcher->onButtonpress(0, false);
    rig.dispatcher->onKnobevent('D');
    rig.dispatcher->onUserMovingMouse();
    rig.dispatcher->onButtonpress(1, true);
    rig.dispatcher->onButtonpress(1, false);
    rig.dispatcher->onKnobevent('U'); // in MIDI mode
    rig.dispatcher->onButtonpress(0, true);
    rig.dispatcher->onButtonpress(0, false);
    rig.recorder.takeLines();
    rig.dispatcher->reEnableZR();
    QVERIFY2(rig.recorder.lines().isEmpty(), qPrintable(rig.recorder.lines().join(QLatin1Char(' '))));
}

void tst_EventDispatcher::reEnableZRWithoutMouseMovementDoesNothing()
{
    EngineRig rig(QPoint(5, 5));
    rig.dispatcher->onKnobevent('D');
    rig.recorder.takeLines();
    rig.pointer.place(QPoint(90, 90));
    rig.dispatcher->reEnableZR();
    QVERIFY(rig.recorder.lines().isEmpty());
    rig.dispatcher->onKnobevent('U');
    QCOMPARE(rig.recorder.takeLines().last(), QStringLiteral("move 5 5"));
}

void tst_EventDispatcher::restoreMousePutsThePointerBack()
{
    EngineRig rig;
    rig.dispatcher->onKnobevent('D');
    rig.recorder.takeLines();
    rig.dispatcher->restoreMouse();
    QCOMPARE(rig.recorder.takeLines(), lines({"show"})); // no button event
    rig.dispatcher->restoreMouse();
    QCOMPARE(rig.recorder.takeLines(), lines({"show"})); // hidden or not
}

void tst_EventDispatcher::releaseEverythingReleasesKeysAndDrag()
{
    EngineRig rig;
    rig.dispatcher->setAction(0, Layer::Normal, keys(17, 16, 83));
    rig.dispatcher->onButtonpress(0, true);
    rig.dispatcher->onKnobevent('D');
    rig.recorder.takeLines();
    rig.dispatcher->releaseEverything();
    QCOMPARE(rig.recorder.takeLines(), lines({"key 17 up", "key 16 up", "key 83 up", "left up", "show"}));
    rig.dispatcher->releaseEverything();
    QVERIFY(rig.recorder.lines().isEmpty());
}

void tst_EventDispatcher::releasesEverythingWhenDestroyed()
{
    EngineRig rig;
    rig.dispatcher->setAction(0, Layer::Normal, keys(17));
    rig.dispatcher->onButtonpress(0, true);
    rig.recorder.takeLines();
    rig.dispatcher.reset();
    QCOMPARE(rig.recorder.takeLines(), lines({"key 17 up"}));
    rig.clock.advance(5000);
}

void tst_EventDispatcher::aSlotMayChangeTheMapping()
{
    EngineRig rig;
    rig.dispatcher->setAction(0, Layer::Normal, keys(65));
    connect(rig.dispatcher.get(), &EventDispatcher::buttonHeld, this, [&rig](int button, bool held) {
        if (held) {
            rig.dispatcher->setActions(ActionTable());
            rig.dispatcher->setAction(button, Layer::Normal, keys(66));
        }
    });
    rig.dispatcher->onButtonpress(0, true);
    rig.dispatcher->onButtonpress(0, false);
    QCOMPARE(rig.recorder.takeLines(), lines({"key 66 down", "key 66 up"}));
}

QTEST_GUILESS_MAIN(tst_EventDispatcher)
#include "tst_EventDispatcher.moc"
