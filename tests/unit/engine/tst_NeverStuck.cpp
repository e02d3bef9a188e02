#include "mapping/SpecialAction.h"
#include "tests/support/main/Main.h"
#include "tests/support/random/Seeds.h"
#include "tests/support/script/EngineRig.h"
#include "tests/support/script/SideBySide.h"
#include "tests/unit/engine/PlainDispatcher.h"
#include "tests/unit/engine/SystemModel.h"

#include <QTest>

#include <random>

namespace
{

constexpr int deviceEventsPerSeed = 100'000;

/// The engine and the plain description of it side by side, fed with the same random events. After each event
/// the engine must have put out what the description says, in that order, and behind it nothing but releases
/// of what was held; and whenever no button is down and the knob is let go, nothing is held.
class Comparison
{
public:
    explicit Comparison(quint32 seed)
        : m_random(seed)
        , m_rig(start)
        , m_plain(start)
    {
        m_rig.pointer.setScreens(screens);
        m_plain.screens = screens;
        for (int button = 0; button < 10; ++button) {
            for (int layer = 0; layer < 3; ++layer) {
                remap(button, layer);
            }
        }
        setSensitivity();
    }

    /// Empty when all went well, else what went wrong.
    QString run()
    {
        while (m_deviceEvents < deviceEventsPerSeed && m_failure.isEmpty()) {
            act();
        }
        return m_failure;
    }

    int idleMoments() const { return m_idleMoments; }
    int games() const { return m_games; }
    int releasedByLedger() const { return m_releasedByLedger; }

private:
    static constexpr QPoint start{700, 500};
    const QVector<QRect> screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}, {3200, 0, 800, 600}};

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    bool chance(int percent) { return below(100) < percent; }

    shortCut randomAction()
    {
        shortCut action;
        const int kind = below(100);
        if (kind < 20) { // the game's chord
            action.key1 = SPECIAL_ACTION;
            action.key2 = 4 + below(3);
        } else if (kind < 50) {
            action.key1 = SPECIAL_ACTION;
            action.key2 = below(14);
        } else if (kind < 58) {
            action.key1 = MIDI_KNOB_ACTION;
            setMidiFields(action);
        } else if (kind < 65) {
            action.key1 = MIDI_BUTTON_ACTION;
            setMidiFields(action);
        } else {
            static constexpr qint32 codes[] = {-1, 0, 16, 17, 18, 65, 66, 91, 0x10041, 0x20000, 255};
            action.key1 = codes[below(11)];
            action.key2 = codes[below(11)];
            action.key3 = codes[below(11)];
        }
        return action;
    }

    // Notes and controllers that their action ends have other numbers than those that are meant to ring on.
    void setMidiFields(shortCut &action)
    {
        action.note = chance(70);
        action.v_off_enable = chance(70);
        action.channel = 1 + below(2);
        action.cc = chance(5) ? -1 : below(3) + (action.v_off_enable ? SystemModel::firstOwedNote : 0);
        action.v_on = SystemModel::leastOn + below(127 - SystemModel::leastOn);
        action.v_off = below(SystemModel::leastOn);
        action.knobcc = SystemModel::firstKnobController + below(128 - SystemModel::firstKnobController);
        action.m01h = chance(30);
        action.m3fh = chance(30);
        action.m0_127 = chance(30);
    }

    void remap(int button, int layer)
    {
        const shortCut action = randomAction();
        m_plain.actions[button][layer] = action;
        m_rig.dispatcher->setAction(button, *Layers::fromNumber(layer), action);
    }

    void setSensitivity()
    {
        m_plain.sensitivityNormal = 1 + below(5);
        m_plain.sensitivityShift1 = 1 + below(5);
        m_rig.settings.setKnobSensitivityNormal(m_plain.sensitivityNormal);
        m_rig.settings.setKnobSensitivityShift1(m_plain.sensitivityShift1);
    }

    void act()
    {
        const int what = below(1000);
        if (what < 430) {
            pressOrRelease();
        } else if (what < 800) {
            turnOrTouch();
        } else if (what < 880) {
            count();
        } else if (what < 930) {
            moveMouse();
        } else if (what < 980) {
            wait();
        } else if (what < 990) {
            remap(below(10), below(3));
        } else if (what < 995) {
            unplug();
        } else {
            letGoOfEverything();
        }
    }

    void button(int button, bool pressing)
    {
        ++m_deviceEvents;
        if (button >= 0 && button <= 9) {
            m_down[button] = pressing;
        }
        m_plain.button(button, pressing);
        m_rig.dispatcher->onButtonpress(button, pressing);
        compare(QStringLiteral("button %1 %2").arg(button).arg(pressing));
    }

    void knob(char type)
    {
        ++m_deviceEvents;
        m_finger = type == 'D' || (m_finger && type != 'U');
        m_plain.knob(type);
        m_rig.dispatcher->onKnobevent(type);
        compare(QStringLiteral("knob %1").arg(QLatin1Char(type)));
    }

    // Mostly what a hand can do, now and then what only a broken line can.
    void pressOrRelease()
    {
        if (chance(2)) {
            button(below(40) - 15, chance(50));
            return;
        }
        const int which = below(10);
        button(which, chance(2) ? m_down[which] : !m_down[which]);
    }

    void turnOrTouch()
    {
        const int what = below(100);
        if (what < 30) {
            knob(m_finger ? 'U' : 'D');
        } else if (what < 94) {
            knob(chance(50) ? 'L' : 'R');
        } else {
            static constexpr char others[] = {'D', 'U', 'S', '+', 'l', '\x7F'};
            knob(others[below(6)]);
        }
    }

    void count()
    {
        ++m_deviceEvents;
        int value = below(121) - 60;
        if (chance(2)) {
            value = static_cast<int>(m_random());
        }
        m_plain.count(value);
        m_rig.dispatcher->onKnobevent(value);
        compare(QStringLiteral("count %1").arg(value));
    }

    void moveMouse()
    {
        const QPoint to(below(4000), below(600));
        m_plain.mouseMoved(to);
        m_rig.pointer.place(to);
        m_rig.dispatcher->onUserMovingMouse();
        compare(QStringLiteral("mouse"));
    }

    void wait()
    {
        const int milliseconds = below(chance(20) ? 1500 : 300);
        m_plain.advance(milliseconds);
        m_rig.clock.advance(milliseconds);
        compare(QStringLiteral("wait %1").arg(milliseconds));
    }

    void unplug()
    {
        m_finger = false;
        m_plain.letKnobGo();
        m_rig.dispatcher->letKnobGo();
        compare(QStringLiteral("knob let go"));
        for (int which = 0; which < 10; ++which) {
            button(which, false);
        }
        m_rig.dispatcher->onDeviceLost();
        compare(QStringLiteral("device lost"));
    }

    void letGoOfEverything()
    {
        for (int which = 0; which < 10; ++which) {
            if (m_down[which]) {
                button(which, false);
            }
        }
        if (m_finger) {
            knob('U');
        }
    }

    bool isIdle() const
    {
        return !m_finger &&
               std::none_of(std::begin(m_down), std::end(m_down), [](bool down) { return down; });
    }

    void compare(const QString &event)
    {
        if (!m_failure.isEmpty()) {
            return;
        }
        const QStringList expected = m_plain.takeLines();
        const QStringList actual = m_rig.recorder.takeLines();
        const auto fail = [&](const QString &why) {
            m_failure = QStringLiteral("event %1 (%2): %3").arg(m_deviceEvents).arg(event, why) +
                        sideBySide(expected, actual);
        };
        if (actual.mid(0, expected.size()) != expected) {
            fail(QStringLiteral("the output differs"));
            return;
        }
        for (int index = 0; index < actual.size(); ++index) {
            const QString &line = actual.at(index);
            m_games += line == QLatin1String("panel GAME") ? 1 : 0;
            if (index >= expected.size()) {
                ++m_releasedByLedger;
                if (!m_system.isReleaseOfSomethingHeld(line)) {
                    fail(QStringLiteral("\"%1\" is one too many").arg(line));
                }
            }
            m_system.take(line);
        }
        if (!m_finger && m_system.isDragging()) {
            fail(QStringLiteral("a drag without a finger"));
            return;
        }
        if (isIdle()) {
            ++m_idleMoments;
            if (!m_system.held().isEmpty()) {
                fail(QStringLiteral("still held: ") + m_system.held());
            } else if (m_rig.dispatcher->currentLayer() != Layer::Normal) {
                fail(QStringLiteral("the layer is %1").arg(Layers::number(m_rig.dispatcher->currentLayer())));
            }
        }
    }

    std::mt19937 m_random;
    EngineRig m_rig;
    PlainDispatcher m_plain;
    SystemModel m_system;
    QString m_failure;
    bool m_down[10] = {};
    bool m_finger = false;
    int m_deviceEvents = 0;
    int m_idleMoments = 0;
    int m_games = 0;
    int m_releasedByLedger = 0;
};

} // namespace

class tst_NeverStuck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsHeldWhenAllIsLetGoAndNothingIsFiltered_data();
    void nothingIsHeldWhenAllIsLetGoAndNothingIsFiltered();
};

void tst_NeverStuck::nothingIsHeldWhenAllIsLetGoAndNothingIsFiltered_data()
{
    addSeeds({1, 2, 3, 4, 5});
}

void tst_NeverStuck::nothingIsHeldWhenAllIsLetGoAndNothingIsFiltered()
{
    QFETCH(quint32, seed);
    Comparison comparison(seed);
    const QString failure = comparison.run();
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    qInfo("%d device events, %d games, nothing held at %d idle moments, %d releases by the "
          "ledger",
          deviceEventsPerSeed, comparison.games(), comparison.idleMoments(), comparison.releasedByLedger());
    QVERIFY(comparison.games() > 10);
    QVERIFY(comparison.idleMoments() > 500);
    QVERIFY(comparison.releasedByLedger() > 100);
}

QTEST_GUILESS_MAIN(tst_NeverStuck)
#include "tst_NeverStuck.moc"
