#pragma once

#include "engine/platform/recording/Recorder.h"
#include "midi/MidiBackend.h"

/// A MIDI system with one port, which records what is sent to it. It can stand still, and die.
class RecordingMidiBackend final : public MidiBackend
{
    Q_DISABLE_COPY_MOVE(RecordingMidiBackend)

public:
    /// @p recorder must outlive this object.
    explicit RecordingMidiBackend(Recorder &recorder)
        : m_recorder(recorder)
    {
    }

    unsigned int portCount() override { return 1; }
    std::string portName(unsigned int) override { return "FROM Veltrix"; }
    void openPort(unsigned int, const std::string &) override {}
    void closePort() override {}
    void sendMessage(const std::vector<unsigned char> &message) override
    {
        m_recorder.recordMidi(
            QByteArray(reinterpret_cast<const char *>(message.data()), static_cast<int>(message.size())));
    }
    void setCallback(Callback) override {}
    bool isAlive() override { return alive; }
    bool hasRoomFor(std::size_t) override { return alive && hasRoom; }

    bool alive = true;
    bool hasRoom = true;

private:
    Recorder &m_recorder;
};
