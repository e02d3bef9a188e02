#pragma once

#include "engine/EventDispatcher.h"
#include "engine/InputLedger.h"
#include "engine/KnobSettings.h"
#include "engine/LaunchOnStartup.h"
#include "engine/MidiActions.h"
#include "engine/Settings.h"
#include "engine/SystemClock.h"
#include "engine/platform/Platform.h"
#include "midi/MidiOutPort.h"

#include <QObject>
#include <QString>

class OwedMessages;

/// The engine on a platform: what carries out the device's events, without any window.
///
/// Owns its parts by value in the order in which they need each other. Lives on the GUI thread; needs the
/// application object and its names.
class Core : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Core)

public:
    /// @p owedMessages are kept up to date with what MIDI is owed if the program ends now. The arguments must
    /// outlive this object.
    Core(Platform &platform, OwedMessages &owedMessages);
    ~Core() override;

    Settings &settings() { return m_settings; }
    KnobSettings &knobSettings() { return m_knobSettings; }
    LaunchOnStartup &launchOnStartup() { return m_launchOnStartup; }
    EventDispatcher &dispatcher() { return m_dispatcher; }
    Clock &clock() { return m_clock; }

    /// The MIDI output in use, or "Not Available".
    const QString &midiPortName() const { return m_midiPortName; }

private:
    void end();

    Settings m_settings;
    KnobSettings m_knobSettings;
    LaunchOnStartup m_launchOnStartup;
    SystemClock m_clock;
    InputLedger m_ledger;
    MidiOutPort m_midiPort;
    MidiActions m_midi;
    QString m_midiPortName;
    EventDispatcher m_dispatcher;
};
