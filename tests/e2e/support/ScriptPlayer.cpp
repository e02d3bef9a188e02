#include "tests/e2e/support/ScriptPlayer.h"

#include "mapping/ZRButtonMap.h"
#include "tests/e2e/support/Desk.h"
#include "tests/e2e/support/ProgramHome.h"
#include "tests/support/script/ExpectedStreams.h"

#include <QThread>

#include <algorithm>

namespace
{

using Kind = ScriptStep::Kind;

constexpr int patience = 5000; // ms; reached only when something is wrong
constexpr int settled = 60;    // ms: what an event causes is there by then
constexpr int surplus = 120;   // ms: how long more than the expected output is waited for

/// The step as the virtual device's input has it; empty for a step that is not its.
QString deviceLine(const ScriptStep &step)
{
    switch (step.kind) {
    case Kind::Button:
        return QStringLiteral("B%1%2").arg(QLatin1Char(step.pressing ? 'P' : 'R')).arg(step.button);
    case Kind::KnobType:
        // Any byte can be a type, and a script of the device is text.
        return QStringLiteral("raw 4b4e%1 0a0d0a")
            .arg(static_cast<uchar>(step.type), 2, 16, QLatin1Char('0'));
    case Kind::KnobCount:
        return QString::number(step.number);
    case Kind::Wait:
        return QStringLiteral("wait %1").arg(step.number);
    case Kind::Raw:
        return QStringLiteral("raw ") + QString::fromLatin1(step.bytes.toHex());
    default:
        return {};
    }
}

class Session
{
    Q_DISABLE_COPY_MOVE(Session)

public:
    Session(const Script &script, Desk &desk)
        : m_script(script)
        , m_desk(desk)
    {
    }

    Played run()
    {
        setUp();
        if (m_played.error.isEmpty()) {
            start();
        }
        for (const ScriptStep &step : m_script.events) {
            if (m_played.error.isEmpty()) {
                carryOut(step);
            }
        }
        if (m_played.error.isEmpty()) {
            collect();
        }
        end();
        return m_played;
    }

private:
    void fail(const char *error)
    {
        if (m_played.error.isEmpty()) {
            m_played.error = QString::fromLatin1(error);
        }
    }

    void setUp()
    {
        ZRButtonMap map(QStringLiteral("current_map"));
        QPoint pointer;
        for (const ScriptStep &step : m_script.setUp) {
            if (step.kind == Kind::Assign) {
                map.setAction(step.button, Layers::number(step.layer), step.action);
            } else if (step.kind == Kind::At) {
                pointer = step.point;
            } else if (step.kind == Kind::Sensitivity) {
                m_home.writeSensitivity(step.number, step.number2);
            }
        }
        m_home.writeCurrentMap(map);
        const bool moves = m_desk.devices().pointerPosition() != pointer;
        m_desk.devices().warpPointerTo(pointer.x(), pointer.y());
        if (moves) {
            // On a busy machine the window tells late of it.
            const QString own = QStringLiteral("move %1 %2").arg(pointer.x()).arg(pointer.y());
            m_desk.listener().readUntil([&own](const QStringList &lines) { return lines.contains(own); },
                                        2000);
        }
        m_desk.listener().readFor(settled);
        m_desk.listener().take();
    }

    void start()
    {
        QProcessEnvironment environment = m_desk.environment();
        m_home.addTo(environment);
        m_simulator =
            std::make_unique<Child>(QStringLiteral(SIMULATOR),
                                    QStringList{QStringLiteral("--stdin"), QStringLiteral("--timestamps"),
                                                QStringLiteral("--link"), m_home.devicePath()},
                                    environment, Child::Output::Standard);
        m_program = std::make_unique<Child>(QStringLiteral(PROGRAM),
                                            QStringList{QStringLiteral("--port"), m_home.devicePath()},
                                            environment, Child::Output::Error);
        if (!m_simulator->waitForLine(QStringLiteral("opened"), patience)) {
            fail("the program did not open the device");
        }
    }

    void carryOut(const ScriptStep &step)
    {
        const QString line = deviceLine(step);
        if (!line.isEmpty()) {
            m_simulator->send(line);
            if (step.kind == Kind::Wait) {
                m_waiting += step.number;
                m_waitingAtTheEnd += step.number;
            } else {
                ++m_unconfirmed;
                m_waitingAtTheEnd = 0;
            }
            return;
        }
        confirm();
        m_desk.listener().readFor(settled);
        switch (step.kind) {
        case Kind::Mouse:
            moveMouse(step.point);
            break;
        case Kind::Unplug:
            m_simulator->send(QStringLiteral("unplug"));
            if (!waitForLog(QStringLiteral("unplugged"))) {
                fail("the program did not notice that the device went");
            }
            break;
        case Kind::Plug:
            m_simulator->send(QStringLiteral("plug"));
            if (!m_simulator->waitForLine(QStringLiteral("opened"), patience)) {
                fail("the program did not open the device again");
            }
            break;
        default:
            fail("a step that cannot be played");
            break;
        }
    }

    /// Waits until the virtual device has sent everything that it was told to.
    void confirm()
    {
        int left = m_unconfirmed;
        const auto allSent = [&left](const QStringList &lines) {
            const auto sent = std::count_if(lines.begin(), lines.end(), [](const QString &line) {
                return line.startsWith(QLatin1String("sent "));
            });
            return sent >= left;
        };
        if (!m_simulator->readUntil(allSent, patience + m_waiting)) {
            fail("the virtual device did not send everything");
        }
        // No report confirms a wait at the end.
        QThread::msleep(static_cast<unsigned long>(m_waitingAtTheEnd));
        m_simulator->take();
        m_unconfirmed = 0;
        m_waiting = 0;
        m_waitingAtTheEnd = 0;
    }

    bool waitForLog(const QString &text)
    {
        const auto contains = [&text](const QStringList &lines) { return !lines.filter(text).isEmpty(); };
        const int before = m_program->lines().size();
        return m_program->readUntil(
            [&contains, before](const QStringList &lines) { return contains(lines.mid(before)); }, patience);
    }

    void moveMouse(QPoint to)
    {
        const QPoint from = m_desk.devices().pointerPosition();
        if (from == to) {
            return;
        }
        Child &listener = m_desk.listener();
        const QString own = QStringLiteral("move %1 %2").arg(to.x()).arg(to.y());
        takeOutput();
        m_desk.devices().moveMouseBy(to.x() - from.x(), to.y() - from.y());
        // The window sees the user's movements, too; they are none of the program's output.
        if (!listener.readUntil([&own](const QStringList &lines) { return lines.contains(own); }, patience)) {
            fail("the mouse did not move");
        }
        QStringList lines = listener.take();
        lines.removeOne(own);
        m_output += lines;
    }

    void takeOutput() { m_output += m_desk.listener().take(); }

    void collect()
    {
        confirm();
        const int expected = expectedOnDesktop(m_script).size() + expectedMidi(m_script).size();
        takeOutput();
        const int missing = expected - m_output.size();
        m_desk.listener().readUntil([missing](const QStringList &lines) { return lines.size() >= missing; },
                                    1500);
        m_desk.listener().readFor(surplus);
        takeOutput();
        QString lastMove;
        for (const QString &line : m_output) {
            const bool isMove = line.startsWith(QLatin1String("move "));
            // A movement to where the pointer stands makes an event on some servers and none on others.
            if (isMove && line == lastMove) {
                continue;
            }
            if (isMove) {
                lastMove = line;
            }
            (line.startsWith(QLatin1String("midi ")) ? m_played.midi : m_played.desktop).append(line);
        }
    }

    void end()
    {
        if (m_program) {
            if (!m_program->terminate()) {
                fail("the program did not end with SIGTERM");
            } else if (m_program->hasCrashed()) {
                fail("the program crashed");
            }
            m_played.log = m_program->take();
        }
        if (m_simulator) {
            m_simulator->closeInput();
        }
        m_simulator.reset();
        m_played.leftOver = !m_desk.devices().waitNothingHeld(200);
        m_desk.listener().readFor(settled);
        m_desk.listener().take();
    }

    const Script &m_script;
    Desk &m_desk;
    ProgramHome m_home;
    std::unique_ptr<Child> m_simulator;
    std::unique_ptr<Child> m_program;
    QStringList m_output;
    int m_unconfirmed = 0;
    int m_waiting = 0;         ///< ms in the virtual device's queue
    int m_waitingAtTheEnd = 0; ///< of these, behind the last report
    Played m_played;
};

} // namespace

QString scriptplayer::obstacle(const Script &script)
{
    if (script.inProcessOnly) {
        return QStringLiteral("marked as in-process");
    }
    for (const ScriptStep &step : script.events) {
        if (step.kind == Kind::Remap) {
            return QStringLiteral("changes an assignment while the program runs");
        }
        if (step.kind == Kind::Button && (step.button < 0 || step.button > 9)) {
            return QStringLiteral("has a button that the device does not have");
        }
    }
    for (const ScriptStep &step : script.setUp) {
        if (step.kind == Kind::Screens && !Desk::canShow(step.screens)) {
            return QStringLiteral("has screens that the X server cannot place");
        }
    }
    return {};
}

Played scriptplayer::play(const Script &script, Desk &desk)
{
    return Session(script, desk).run();
}
