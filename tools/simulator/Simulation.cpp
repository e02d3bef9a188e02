#include "tools/simulator/Simulation.h"

#include "tools/simulator/LineInput.h"
#include "tools/simulator/Output.h"
#include "tools/simulator/VirtualDevice.h"

#include <QFile>

#include <algorithm>

namespace simulator
{

namespace
{

constexpr int standardInput = 0;

void report(const QString &place, int line, const QString &message)
{
    print(QStringLiteral("%1:%2: %3\n").arg(place).arg(line).arg(message), true);
}

} // namespace

Simulation::Simulation(const Options &options, VirtualDevice &device, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_device(device)
    , m_runner(device)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Simulation::advance);
}

Simulation::~Simulation() = default;

int Simulation::load()
{
    if (!m_options.scriptFile) {
        return statusDone;
    }
    QFile file(*m_options.scriptFile);
    if (!file.open(QIODevice::ReadOnly)) {
        print(QStringLiteral("%1: %2\n").arg(file.fileName(), file.errorString()), true);
        return statusMistake;
    }
    const Script script = scriptparser::parse(file.readAll());
    for (const ScriptMistake &mistake : script.mistakes) {
        report(*m_options.scriptFile, mistake.line, mistake.message);
    }
    if (!script.mistakes.isEmpty()) {
        return statusMistake;
    }
    for (const ScriptStep &step : script.steps) {
        m_runner.append(step);
    }
    return statusDone;
}

void Simulation::start()
{
    m_clock.start();
    if (m_options.readInput) {
        m_inputEnded = false;
        m_input = std::make_unique<LineInput>(standardInput);
        m_inputIsTerminal = m_input->isTerminal();
        connect(m_input.get(), &LineInput::line, this, &Simulation::onLine);
        connect(m_input.get(), &LineInput::ended, this, [this] {
            m_inputEnded = true;
            advance();
        });
    }
    // A program that opens the port ends the wait for it.
    connect(&m_device, &VirtualDevice::changed, this, [this] {
        if (!m_timer.isActive() || m_ending) {
            return;
        }
        m_timer.start(0);
    });
    m_timer.start(0);
}

void Simulation::onLine(const QByteArray &line, int number)
{
    const auto parsed = scriptparser::parseLine(line);
    if (const auto *step = std::get_if<ScriptStep>(&parsed)) {
        m_runner.append(*step);
        advance();
    } else if (const auto *mistake = std::get_if<QString>(&parsed)) {
        report(QStringLiteral("stdin"), number, *mistake);
        if (!m_inputIsTerminal) {
            Q_EMIT finished(statusMistake);
        }
    }
}

void Simulation::advance()
{
    m_timer.stop();
    const qint64 now = m_clock.elapsed();
    const std::optional<qint64> next = m_runner.advance(now);
    if (next) {
        m_timer.start(static_cast<int>(std::max<qint64>(0, *next - m_clock.elapsed())));
    } else {
        endWhenDone();
    }
}

void Simulation::endWhenDone()
{
    if (m_runner.hasFailed()) {
        Q_EMIT finished(statusNoPort);
        return;
    }
    if (!m_runner.isDone() || !m_inputEnded || m_options.stay || m_options.window) {
        return;
    }
    if (m_ending || !m_device.isPlugged()) {
        Q_EMIT finished(statusDone);
        return;
    }
    // The last report is to arrive before the cable goes.
    m_ending = true;
    ScriptStep unplug;
    unplug.kind = ScriptStep::Kind::Unplug;
    m_runner.append(unplug);
    m_timer.start(0);
}

} // namespace simulator
