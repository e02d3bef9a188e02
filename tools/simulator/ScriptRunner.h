#pragma once

#include "tools/simulator/ScriptParser.h"

#include <QQueue>

#include <optional>

namespace simulator
{

class VirtualDevice;

/// Plays steps on the device. Holds no timer: it is told the time and answers when it wants to be called
/// again.
///
/// After the cable went in, the first report waits until a program has opened the port (or openTimeout has
/// passed), so that a script works no matter how soon the program finds the device. Before the cable is
/// pulled, what was sent last is given deliveryTimeout to arrive: a hang-up would swallow it.
class ScriptRunner
{
    Q_DISABLE_COPY_MOVE(ScriptRunner)

public:
    static constexpr qint64 openTimeout = 3000;    ///< ms
    static constexpr qint64 deliveryTimeout = 500; ///< ms
    static constexpr qint64 deliveryPoll = 10;     ///< ms

    /// @p device must outlive this object.
    explicit ScriptRunner(VirtualDevice &device);

    void append(const ScriptStep &step) { m_steps.enqueue(step); }
    bool isDone() const { return m_steps.isEmpty() && !m_waitUntil; }

    /// Set when the port could not be plugged in; the rest of the script is then dropped.
    bool hasFailed() const { return m_failed; }

    /// Carries out what is due at @p now (ms on any steady clock). Returns when the next step may be due, or
    /// nothing when there is none. May be called early and at any time, for instance because the port was
    /// opened.
    std::optional<qint64> advance(qint64 now);

private:
    bool mustWaitForProgram(const ScriptStep &step, qint64 now);
    bool mustWaitForDelivery(const ScriptStep &step, qint64 now);
    void carryOut(const ScriptStep &step, qint64 now);

    VirtualDevice &m_device;
    QQueue<ScriptStep> m_steps;
    std::optional<qint64> m_waitUntil;
    std::optional<qint64> m_openDeadline;
    std::optional<qint64> m_deliveryDeadline;
    bool m_openSettled = false;
    bool m_failed = false;
};

} // namespace simulator
