#include "engine/ProgramSwitch.h"

#include "engine/EngineLog.h"
#include "engine/EventDispatcher.h"
#include "mapping/ProgramMappings.h"

#include <utility>

ProgramSwitch::ProgramSwitch(FocusedProgram &focus, const EventDispatcher &dispatcher,
                             ProgramMappings &mappings, QObject *parent)
    : QObject(parent)
    , m_focus(focus)
    , m_dispatcher(dispatcher)
    , m_mappings(mappings)
{
    connect(&focus, &FocusedProgram::focused, this, &ProgramSwitch::onFocused);
    connect(&mappings, &ProgramMappings::changed, this, &ProgramSwitch::follow);
    connect(&mappings, &ProgramMappings::arrived, this, &ProgramSwitch::apply);
    mappings.setTold(focus.isTold());
    follow();
}

ProgramSwitch::~ProgramSwitch() = default;

void ProgramSwitch::setPageShown(bool shown)
{
    m_pageShown = shown;
    follow();
}

void ProgramSwitch::setChoosing(bool choosing)
{
    if (std::exchange(m_choosing, choosing) != choosing) {
        apply();
    }
}

void ProgramSwitch::follow()
{
    m_focus.setWatched(m_pageShown || m_mappings.areUsed());
}

void ProgramSwitch::onFocused(const Program &program)
{
    if (std::exchange(m_last, program) != program) {
        qCDebug(lcEngine).noquote() << "in front:" << program.name;
        Q_EMIT lastChanged();
    }
    apply();
}

void ProgramSwitch::apply()
{
    disconnect(m_waiting);
    if (m_choosing) {
        return; // setChoosing() comes back to it
    }
    if (m_dispatcher.isIdle()) {
        m_mappings.use(m_last.id);
    } else {
        m_waiting = connect(&m_dispatcher, &EventDispatcher::wentIdle, this, &ProgramSwitch::apply);
    }
}
