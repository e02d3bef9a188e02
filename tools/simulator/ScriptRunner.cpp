#include "tools/simulator/ScriptRunner.h"

#include "tools/simulator/VirtualDevice.h"

namespace simulator
{

ScriptRunner::ScriptRunner(VirtualDevice &device)
    : m_device(device)
{
}

std::optional<qint64> ScriptRunner::advance(qint64 now)
{
    if (m_waitUntil && *m_waitUntil > now) {
        return m_waitUntil;
    }
    m_waitUntil.reset();
    while (!m_steps.isEmpty()) {
        if (mustWaitForProgram(m_steps.head(), now)) {
            return m_openDeadline;
        }
        if (mustWaitForDelivery(m_steps.head(), now)) {
            return now + deliveryPoll;
        }
        carryOut(m_steps.dequeue(), now);
        if (m_waitUntil) {
            return m_waitUntil;
        }
    }
    return std::nullopt;
}

bool ScriptRunner::mustWaitForProgram(const ScriptStep &step, qint64 now)
{
    const bool isReport = step.kind == ScriptStep::Kind::Button || step.kind == ScriptStep::Kind::Knob ||
                          step.kind == ScriptStep::Kind::Count || step.kind == ScriptStep::Kind::Raw;
    if (!isReport || m_openSettled || !m_device.isPlugged()) {
        return false;
    }
    if (!m_openDeadline) {
        m_openDeadline = now + openTimeout;
    }
    if (!m_device.isOpened() && now < *m_openDeadline) {
        return true;
    }
    m_openDeadline.reset();
    m_openSettled = true;
    return false;
}

bool ScriptRunner::mustWaitForDelivery(const ScriptStep &step, qint64 now)
{
    if (step.kind != ScriptStep::Kind::Unplug || !m_device.isOpened()) {
        return false;
    }
    if (!m_deliveryDeadline) {
        // Always one round: what was written a moment ago may still be on its way to where it is counted.
        m_deliveryDeadline = now + deliveryTimeout;
        return true;
    }
    if (!m_device.isDelivered() && now < *m_deliveryDeadline) {
        return true;
    }
    m_deliveryDeadline.reset();
    return false;
}

void ScriptRunner::carryOut(const ScriptStep &step, qint64 now)
{
    switch (step.kind) {
    case ScriptStep::Kind::Button:
        m_device.setButton(step.number, step.down);
        break;
    case ScriptStep::Kind::Knob:
        m_device.sendKnob(step.type);
        break;
    case ScriptStep::Kind::Count:
        m_device.sendCount(step.number);
        break;
    case ScriptStep::Kind::Raw:
        m_device.sendRaw(step.bytes);
        break;
    case ScriptStep::Kind::Wait:
        m_waitUntil = now + step.number;
        break;
    case ScriptStep::Kind::Plug:
        m_openSettled = m_openSettled && m_device.isPlugged();
        if (!m_device.setPlugged(true)) {
            m_failed = true;
            m_steps.clear();
        }
        break;
    case ScriptStep::Kind::Unplug:
        m_device.setPlugged(false);
        break;
    }
}

} // namespace simulator
