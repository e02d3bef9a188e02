#include "engine/ProgramSwitch.h"
#include "engine/platform/recording/RecordingFocus.h"
#include "mapping/ProgramMappings.h"
#include "mapping/SpecialAction.h"
#include "mapping/ZRButtonMap.h"
#include "tests/support/script/EngineRig.h"
#include "tests/unit/engine/SystemModel.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace
{

std::mt19937 generator(quint32 seed, quint32 number)
{
    std::seed_seq sequence{seed, number};
    return std::mt19937(sequence);
}

// Nothing can be written there: all that a mapping does, and no disk.
QString nowhere()
{
    return QStringLiteral("/dev/null/mappings");
}

// Two with a mapping of their own, and one without.
QString program(int number)
{
    return QStringLiteral("program number%1").arg(number);
}

/// One life of the engine on the recording backend: random events, and an end of a random kind. At each
/// moment what the release process would end after a crash covers what the engine has begun, the mapping in
/// use is that of the program with the focus unless something is held, and after the end nothing is held.
class Sequence
{
public:
    Sequence(quint32 seed, quint32 number)
        : m_random(generator(seed, number))
    {
        m_rig.pointer.setScreens({{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}});
        m_rig.dispatcher->follow(m_session);
        m_session.load([] {}, [this] { return randomActions(); });
        for (const int each : {0, 1}) {
            m_programs.give(program(each), program(each));
            useAnother();
        }
        m_focus.focus(m_front);
    }

    /// Empty when all went well, else what went wrong.
    QString run()
    {
        for (int events = 1 + below(120); events > 0 && m_failure.isEmpty(); --events) {
            act();
            look();
        }
        if (m_failure.isEmpty()) {
            end();
        }
        return m_failure;
    }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    bool chance(int percent) { return below(100) < percent; }

    shortCut randomAction()
    {
        shortCut action;
        const int kind = below(100);
        if (kind < 40) {
            action.key1 = SPECIAL_ACTION;
            action.key2 = below(12);
        } else if (kind < 65) {
            action.key1 = kind < 50 ? MIDI_KNOB_ACTION : MIDI_BUTTON_ACTION;
            action.note = chance(50);
            action.v_off_enable = chance(80);
            action.channel = 1 + below(2);
            action.cc = below(3) + (action.v_off_enable ? SystemModel::firstOwedNote : 0);
            action.v_on = SystemModel::leastOn + below(127 - SystemModel::leastOn);
            action.v_off = below(SystemModel::leastOn);
            action.knobcc = SystemModel::firstKnobController + below(128 - SystemModel::firstKnobController);
            action.m0_127 = chance(50);
        } else {
            static constexpr int codes[] = {-1, 16, 17, 18, 65, 66, 91, 255};
            action.key1 = codes[below(8)];
            action.key2 = codes[below(8)];
            action.key3 = codes[below(8)];
        }
        return action;
    }

    ActionTable randomActions()
    {
        ActionTable actions;
        for (int button = 0; button < ActionTable::controlCount; ++button) {
            for (const Layer layer : {Layer::Normal, Layer::Shift1, Layer::Shift2}) {
                actions[button][layer] = randomAction();
            }
        }
        return actions;
    }

    // As the user chooses another one in the list, or a script of his does.
    void useAnother()
    {
        ZRButtonMap map(QStringLiteral("Mine"));
        map.actions = randomActions();
        m_session.use(map);
    }

    void act()
    {
        EventDispatcher &engine = *m_rig.dispatcher;
        const int what = below(100);
        if (what < 50) {
            const int button = below(10);
            m_down[button] = !m_down[button];
            engine.onButtonpress(button, m_down[button]);
        } else if (what < 60) {
            m_finger = !m_finger;
            engine.onKnobevent(m_finger ? 'D' : 'U');
        } else if (what < 75) {
            engine.onKnobevent(chance(50) ? 'L' : 'R');
        } else if (what < 80) {
            engine.onKnobevent(below(121) - 60);
        } else if (what < 83) {
            m_rig.pointer.place({below(3000), below(1000)});
            engine.onUserMovingMouse();
        } else if (what < 88) {
            m_rig.clock.advance(below(1500));
        } else if (what < 91) { // a mapping changes, whatever is held
            m_session.assign(below(10), *Layers::fromNumber(below(3)), randomAction());
        } else if (what < 92) {
            useAnother();
        } else if (what < 94) { // another program comes to the front, whatever is held
            m_front = program(below(3));
            m_focus.focus(m_front);
        } else if (what < 96) {
            m_rig.midiSystem->hasRoom = !m_rig.midiSystem->hasRoom;
        } else if (what < 97) {
            m_rig.midiSystem->alive = m_rig.midiSystem->alive && !chance(10);
        } else {
            unplug();
        }
    }

    void unplug()
    {
        m_rig.dispatcher->letKnobGo();
        m_finger = false;
        for (int button = 0; button < 10; ++button) {
            m_down[button] = false;
            m_rig.dispatcher->onButtonpress(button, false);
        }
        m_rig.dispatcher->onDeviceLost();
    }

    void handsOff()
    {
        for (int button = 0; button < 10; ++button) {
            if (m_down[button]) {
                m_rig.dispatcher->onButtonpress(button, false);
            }
        }
        if (m_finger) {
            m_rig.dispatcher->onKnobevent('U');
        }
    }

    void lookAtMapping()
    {
        if (m_rig.dispatcher->isIdle()) {
            m_due = m_programs.has(m_front) ? m_front : QString();
        }
        if (m_programs.inUse() != m_due) {
            m_failure = QStringLiteral("in use is the mapping for \"%1\", not for \"%2\"")
                            .arg(m_programs.inUse(), m_due);
        }
    }

    void look()
    {
        lookAtMapping();
        const QStringList lines = m_rig.recorder.takeLines();
        for (const QString &line : lines) {
            m_system.take(line);
        }
        // A server that has gone takes its sound with it.
        if (!m_rig.midiSystem->alive) {
            m_system.forgetMidi();
        }
        for (const auto &off : m_system.whatEndsMidi()) {
            const auto ends = [&](unsigned char value) {
                return m_rig.afterCrash.contains({off[0], off[1], value});
            };
            if (!ends(0) && !ends(1) && !ends(2)) {
                m_failure = QStringLiteral("after a crash nobody would end: ") + m_system.held();
            }
        }
    }

    void end()
    {
        const int how = below(3);
        if (how == 0) {
            handsOff();
        } else if (how == 1) {
            unplug();
        } else {
            m_rig.dispatcher->letEverythingGo();
            m_rig.dispatcher->restoreMouse();
        }
        look();
        if (!m_system.heldInput().isEmpty()) {
            m_failure = QStringLiteral("held after end %1: %2").arg(how).arg(m_system.heldInput());
        }
        // What a server that stood still has not taken, it gets when it goes on: from the engine, or from the
        // release process, which look() has asked.
        m_rig.midiSystem->hasRoom = true;
        m_rig.clock.advance(200);
        look();
        if (!m_system.held().isEmpty()) {
            m_failure = QStringLiteral("held 0.2 s after end %1: %2").arg(how).arg(m_system.held());
        }
        m_rig.clock.advance(2000);
        if (!m_rig.recorder.takeLines().isEmpty()) {
            m_failure = QStringLiteral("something came later");
        }
    }

    std::mt19937 m_random;
    MappingSession m_session{nowhere()};
    EngineRig m_rig;
    ProgramMappings m_programs{m_session};
    RecordingFocus m_focus;
    const ProgramSwitch m_switch{m_focus, *m_rig.dispatcher, m_programs};
    QString m_front = program(2);
    QString m_due; // whose mapping is to be in use; empty: the one for all programs
    SystemModel m_system;
    QString m_failure;
    bool m_down[10] = {};
    bool m_finger = false;
};

} // namespace

/// engine_sequences SEED FIRST COUNT: plays these sequences; a line for each that failed.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s SEED FIRST COUNT\n", argv[0]);
        return 2;
    }
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    const auto argument = [argv](int index) {
        return static_cast<quint32>(std::strtoul(argv[index], nullptr, 10));
    };
    int failures = 0;
    for (quint32 number = argument(2); number < argument(2) + argument(3); ++number) {
        const QString failure = Sequence(argument(1), number).run();
        if (!failure.isEmpty()) {
            ++failures;
            std::printf("sequence %u: %s\n", number, qPrintable(failure));
        }
    }
    return failures == 0 ? 0 : 1;
}
