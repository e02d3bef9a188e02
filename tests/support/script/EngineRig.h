#pragma once

#include "device/LineDecoder.h"
#include "engine/EventDispatcher.h"
#include "engine/InputLedger.h"
#include "engine/KnobSettings.h"
#include "engine/MidiActions.h"
#include "engine/Settings.h"
#include "engine/platform/recording/Recorder.h"
#include "engine/platform/recording/RecordingAppearance.h"
#include "engine/platform/recording/RecordingInjector.h"
#include "engine/platform/recording/RecordingPointer.h"
#include "midi/MidiOutPort.h"
#include "midi/OwedMessages.h"
#include "tests/support/script/ManualClock.h"
#include "tests/support/script/RecordingMidiBackend.h"
#include "tests/support/script/Script.h"

#include <QTemporaryDir>

#include <memory>

/// The engine as a whole, with nothing of a desktop behind it: what it does is in `recorder`.
class EngineRig
{
    Q_DISABLE_COPY_MOVE(EngineRig)

public:
    /// The pointer stands at @p pointerAt when the engine starts.
    explicit EngineRig(QPoint pointerAt = QPoint());

    /// Carries out one step of a script. A device that is unplugged sends nothing.
    void run(const ScriptStep &step);

    /// Runs a script on a rig of its own and returns the output.
    static QStringList run(const Script &script);

    Recorder recorder;
    RecordingInjector injector{recorder};
    RecordingPointer pointer{recorder};
    RecordingAppearance appearance{recorder};
    InputLedger ledger{injector, appearance};
    ManualClock clock;
    QTemporaryDir directory;
    Settings stored{directory.filePath(QStringLiteral("settings.ini"))};
    KnobSettings settings{stored};
    RecordingMidiBackend *const midiSystem = new RecordingMidiBackend(recorder); ///< the port's
    MidiOutPort midiPort{std::unique_ptr<MidiBackend>(midiSystem)};
    OwedMessages afterCrash;
    MidiActions midi{midiPort, afterCrash, clock};
    std::unique_ptr<EventDispatcher> dispatcher;

private:
    void take(const DeviceEvent &event);
    void unplug();

    LineDecoder m_decoder;
    bool m_plugged = true;
};
