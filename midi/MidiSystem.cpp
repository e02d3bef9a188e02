#include "midi/MidiSystem.h"

#include "midi/JackMidi.h"
#include "midi/MidiLog.h"
#include "midi/RtMidiBackend.h"

#include <QFile>

#include <exception>
#include <stdexcept>

namespace
{

// Without a sequencer both ALSA's library and RtMidi print lines of their own to standard error, for which
// there is no switch. So the device is looked at first, as the library would.
void requireAlsaSequencer()
{
    QFile sequencer(QStringLiteral("/dev/snd/seq"));
    if (!sequencer.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        throw MidiSystemAbsent("no sequencer: " + sequencer.errorString().toStdString());
    }
}

using Backend = std::unique_ptr<MidiBackend>;

std::vector<MidiSystem> compiledSystems(Backend (*open)(RtMidi::Api),
                                        const std::function<Backend()> &openJack)
{
    std::vector<RtMidi::Api> apis;
    RtMidi::getCompiledApi(apis);
    std::vector<MidiSystem> systems;
    for (const RtMidi::Api api : apis) {
        if (api == RtMidi::RTMIDI_DUMMY) {
            continue;
        }
        MidiSystem system;
        system.name = QString::fromStdString(RtMidi::getApiDisplayName(api));
        if (api == RtMidi::UNIX_JACK) {
            system.open = openJack;
        } else if (api == RtMidi::LINUX_ALSA) {
            system.open = [open, api] {
                requireAlsaSequencer();
                return open(api);
            };
        } else {
            system.open = [open, api] { return open(api); };
        }
        systems.push_back(system);
    }
    return systems;
}

} // namespace

std::unique_ptr<MidiBackend> openFirstWorking(const QString &purpose, const std::vector<MidiSystem> &systems,
                                              bool *allAbsent)
{
    std::unique_ptr<MidiBackend> chosen;
    QString chosenName;
    std::size_t absent = 0;
    for (const MidiSystem &system : systems) {
        try {
            std::unique_ptr<MidiBackend> backend = system.open();
            if (!backend) {
                continue;
            }
            const bool hasPorts = backend->portCount() > 0;
            if (hasPorts || !chosen) {
                chosen = std::move(backend);
                chosenName = system.name;
            }
            if (hasPorts) {
                break;
            }
        } catch (const std::exception &error) {
            absent += dynamic_cast<const MidiSystemAbsent *>(&error) ? 1 : 0;
            qCInfo(lcMidi).noquote().nospace() << system.name << ": " << QString::fromLocal8Bit(error.what());
        }
    }
    if (allAbsent) {
        *allAbsent = absent == systems.size();
    }
    if (chosen) {
        qCInfo(lcMidi).noquote() << purpose << "goes through" << chosenName;
    } else {
        qCInfo(lcMidi).noquote() << purpose << "is off: no MIDI system works";
    }
    return chosen;
}

std::unique_ptr<MidiBackend> openMidiOutput()
{
    return openMidiOutput(StallGuard::patience);
}

std::unique_ptr<MidiBackend> openMidiOutput(std::chrono::milliseconds patience, bool *allAbsent)
{
    return openFirstWorking(
        QStringLiteral("MIDI output"),
        compiledSystems(&RtMidiBackend::openOutput, [patience] { return openJackOutput(patience); }),
        allAbsent);
}

std::unique_ptr<MidiBackend> openMidiInput()
{
    return openFirstWorking(QStringLiteral("MIDI input"),
                            compiledSystems(&RtMidiBackend::openInput, openJackInput));
}
