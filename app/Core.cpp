#include "app/Core.h"

#include "app/frame/AppInfo.h"

#include <QCoreApplication>

Core::Core(Platform &platform, OwedMessages &owedMessages)
    : m_settings(QLatin1String(AppInfo::organisationName), QLatin1String(AppInfo::applicationName))
    , m_knobSettings(m_settings)
    , m_launchOnStartup(*platform.autostart, QCoreApplication::applicationFilePath())
    , m_ledger(*platform.injector, *platform.appearance)
    , m_midi(m_midiPort, owedMessages, m_clock)
    , m_midiPortName(m_midi.chooseOutputPort())
    , m_dispatcher(m_ledger, *platform.pointer, m_midi, m_knobSettings, m_clock)
{
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &Core::end);
}

Core::~Core()
{
    m_midi.closePort();
}

// While the event loop still stands: nothing may be held in the system, nor by a MIDI controller, when the
// program is gone.
void Core::end()
{
    m_dispatcher.letEverythingGo();
    m_dispatcher.restoreMouse();
    m_settings.write();
}
