#pragma once

#include <QtGlobal>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// The MIDI library, one virtual function per call and nothing else. Every function may throw std::exception
/// (or a class derived from it); the ports catch what comes. All functions are called from one thread.
class MidiBackend
{
    Q_DISABLE_COPY_MOVE(MidiBackend)

public:
    using Callback = std::function<void(const std::vector<unsigned char> &message)>;

    MidiBackend() = default;
    virtual ~MidiBackend() = default;

    virtual unsigned int portCount() = 0;
    virtual std::string portName(unsigned int index) = 0;
    virtual void openPort(unsigned int index, const std::string &name) = 0;
    virtual void closePort() = 0;

    /// False once the system behind the port is known to be gone, which is for good: sending would never come
    /// back.
    virtual bool isAlive() { return true; }

    /// Output only. False while it is not certain that sendMessage() with this many bytes would return at
    /// once.
    virtual bool hasRoomFor(std::size_t bytes)
    {
        Q_UNUSED(bytes)
        return true;
    }

    /// Output only. True when all that was sent has certainly left this process, and the server has begun to
    /// take along what is sent.
    virtual bool isAllSent() { return true; }

    /// Output only, when the port is open. False when what is sent is not known to arrive there: some
    /// libraries keep it to themselves when their server refuses the connection. True as well when the port
    /// has gone. Ports with the name that openPort() was given are taken for this one. May wait for the
    /// server.
    virtual bool isConnected() { return true; }

    /// Output only. @p message is not empty. To be called only after isAlive() and hasRoomFor() said yes.
    virtual void sendMessage(const std::vector<unsigned char> &message) = 0;

    /// Input only, once, before the port is opened. @p callback runs on the MIDI driver's thread.
    virtual void setCallback(Callback callback) = 0;
};
