#include "mapping/SpecialAction.h"
#include "tests/e2e/support/Desk.h"
#include "tests/e2e/support/ScriptPlayer.h"
#include "tests/support/main/Main.h"
#include "tests/support/script/ExpectedStreams.h"
#include "tests/support/script/ScriptParser.h"
#include "tests/support/script/SideBySide.h"

#include <QDir>
#include <QLoggingCategory>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <thread>

namespace
{

/// How many scripts run at the same time. Nearly all of a run is waiting: for the program's next look at the
/// ports, for the scripts' own pauses.
constexpr int laneCount = 6;

struct Case {
    QString name;
    Script script;
    QString mistake;
    QString obstacle;
    Played played;
};

QVector<QRect> screensOf(const Script &script)
{
    for (const ScriptStep &step : script.setUp) {
        if (step.kind == ScriptStep::Kind::Screens) {
            return step.screens;
        }
    }
    return {};
}

bool usesMidi(const Script &script)
{
    return std::any_of(script.setUp.begin(), script.setUp.end(), [](const ScriptStep &step) {
        return step.kind == ScriptStep::Kind::Assign && isMidi(step.action);
    });
}

bool unplugs(const Script &script)
{
    return std::any_of(script.events.begin(), script.events.end(),
                       [](const ScriptStep &step) { return step.kind == ScriptStep::Kind::Unplug; });
}

/// Warnings and errors in the program's log that the case does not cause.
QStringList complaints(const Case &one)
{
    QStringList result;
    for (const QString &line : one.played.log) {
        static const QRegularExpression serious(QStringLiteral("^[0-9:.]+ (warning|error|fatal) "));
        const bool noMidiServer =
            !usesMidi(one.script) && line.endsWith(QLatin1String("error opening MidiOut"));
        const bool cableIsOut =
            unplugs(one.script) && line.contains(QLatin1String("veltrix.device: lost the device"));
        if (serious.match(line).hasMatch() && !noMidiServer && !cableIsOut) {
            result.append(line);
        }
    }
    return result;
}

/// Cases that lanes take one after the other.
struct Queue {
    std::vector<Case *> cases;
    std::atomic<std::size_t> next{0};
};

void play(Queue &queue, Desk::Midi midi)
{
    std::unique_ptr<Desk> desk;
    for (;;) {
        const std::size_t index = queue.next++;
        if (index >= queue.cases.size()) {
            return;
        }
        Case &one = *queue.cases[index];
        const QVector<QRect> screens = screensOf(one.script);
        if (!desk || desk->screens() != screens || !desk->error().isEmpty() ||
            !desk->listener().isRunning()) {
            desk.reset();
            desk = std::make_unique<Desk>(midi, screens);
        }
        one.played.error = desk->error();
        if (one.played.error.isEmpty()) {
            one.played = scriptplayer::play(one.script, *desk);
        }
    }
}

} // namespace

/// Every text script that can be, on the real program. All are played first, several at a time; each test
/// then looks at the result of its own.
class tst_ScriptsOnTheProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void script_data();
    void script();
    void mostScriptsAreAmongThem();

private:
    std::vector<Case> m_cases;
};

void tst_ScriptsOnTheProgram::initTestCase()
{
    QLoggingCategory::setFilterRules(
        QStringLiteral("veltrix.mapping.info=false")); // of the writer of our own maps
    const QDir directory(QStringLiteral(SCRIPTS));
    const QString wanted = qEnvironmentVariable("SCRIPT", QStringLiteral("*"));
    for (const QString &file :
         directory.entryList({wanted + QStringLiteral(".t")}, QDir::Files, QDir::Name)) {
        Case one;
        one.name = file.chopped(2);
        const ParsedScript parsed = readScript(directory.filePath(file));
        one.mistake = parsed.mistake;
        one.script = parsed.script;
        one.obstacle = scriptplayer::obstacle(one.script);
        m_cases.push_back(one);
    }
    QVERIFY(!m_cases.empty());
    // Scripts with the same screens one after the other: a lane then seldom needs another X server.
    std::stable_sort(m_cases.begin(), m_cases.end(), [](const Case &a, const Case &b) {
        return screensOf(a.script).size() < screensOf(b.script).size();
    });
    Queue withMidi;
    Queue others;
    for (Case &one : m_cases) {
        if (one.mistake.isEmpty() && one.obstacle.isEmpty()) {
            (usesMidi(one.script) ? withMidi : others).cases.push_back(&one);
        }
    }
    std::vector<std::thread> lanes;
    lanes.emplace_back([&withMidi, &others] {
        play(withMidi, Desk::Midi::With);
        play(others, Desk::Midi::Without);
    });
    for (int lane = 1; lane < laneCount; ++lane) {
        lanes.emplace_back([&others] { play(others, Desk::Midi::Without); });
    }
    for (std::thread &lane : lanes) {
        lane.join();
    }
}

void tst_ScriptsOnTheProgram::script_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t i = 0; i < m_cases.size(); ++i) {
        if (m_cases[i].obstacle.isEmpty()) {
            QTest::newRow(qPrintable(m_cases[i].name)) << static_cast<int>(i);
        }
    }
}

void tst_ScriptsOnTheProgram::script()
{
    QFETCH(int, index);
    const Case &one = m_cases[static_cast<std::size_t>(index)];
    QVERIFY2(one.mistake.isEmpty(), qPrintable(one.mistake));
    const QString log = QStringLiteral("\nThe program's log:\n") + one.played.log.join(QLatin1Char('\n'));
    QVERIFY2(one.played.error.isEmpty(), qPrintable(one.played.error + log));
    const QString desktop = sideBySide(expectedOnDesktop(one.script), one.played.desktop);
    QVERIFY2(desktop.isEmpty(), qPrintable(QLatin1Char('\n') + desktop + log));
    const QString midi = sideBySide(expectedMidi(one.script), one.played.midi);
    QVERIFY2(midi.isEmpty(), qPrintable(QLatin1Char('\n') + midi + log));
    QVERIFY2(!one.played.leftOver, qPrintable(QStringLiteral("something is still held") + log));
    QVERIFY2(complaints(one).isEmpty(), qPrintable(complaints(one).join(QLatin1Char('\n'))));
}

void tst_ScriptsOnTheProgram::mostScriptsAreAmongThem()
{
    if (qEnvironmentVariableIsSet("SCRIPT")) {
        QSKIP("one script was asked for");
    }
    const auto played =
        std::count_if(m_cases.begin(), m_cases.end(), [](const Case &one) { return one.obstacle.isEmpty(); });
    for (const Case &one : m_cases) {
        if (!one.obstacle.isEmpty()) {
            qInfo("not on the program: %s (%s)", qPrintable(one.name), qPrintable(one.obstacle));
        }
    }
    QVERIFY(static_cast<std::size_t>(played) * 3 > m_cases.size() * 2);
}

QTEST_GUILESS_MAIN(tst_ScriptsOnTheProgram)
#include "tst_ScriptsOnTheProgram.moc"
