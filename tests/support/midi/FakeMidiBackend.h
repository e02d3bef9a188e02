#pragma once

#include "midi/MidiBackend.h"

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// What a FakeMidiBackend was asked for and how it is to behave. Shared, so that a test can look at it after
/// the port that owns the backend is gone.
struct FakeMidi {
    std::vector<std::string> ports;
    std::map<std::string, int> calls;                ///< how often each function was called
    std::map<std::string, std::pair<int, int>> fail; ///< function: calls [first, last] throw, counted from 1
    std::vector<unsigned int> opened;
    std::string openedAs;
    std::vector<std::vector<unsigned char>> sent;
    MidiBackend::Callback callback;
    bool alive = true;
    bool hasRoom = true;
    bool allSent = true;
    bool isOpen = false;
    int destroyed = 0;

    void called(const std::string &function)
    {
        const int count = ++calls[function];
        const auto failing = fail.find(function);
        if (failing != fail.end() && count >= failing->second.first && count <= failing->second.second) {
            throw std::runtime_error(function + " failed");
        }
    }
};

/// Compared with JACK by tst_MidiDouble.
class FakeMidiBackend final : public MidiBackend
{
    Q_DISABLE_COPY_MOVE(FakeMidiBackend)

public:
    explicit FakeMidiBackend(std::shared_ptr<FakeMidi> midi)
        : m_midi(std::move(midi))
    {
    }
    ~FakeMidiBackend() override { ++m_midi->destroyed; }

    unsigned int portCount() override
    {
        m_midi->called("portCount");
        return static_cast<unsigned int>(m_midi->ports.size());
    }
    std::string portName(unsigned int index) override
    {
        m_midi->called("portName");
        return m_midi->ports.at(index);
    }
    void openPort(unsigned int index, const std::string &name) override
    {
        m_midi->called("openPort");
        m_midi->opened.push_back(index);
        m_midi->openedAs = name;
        m_midi->isOpen = true;
    }
    void closePort() override
    {
        m_midi->called("closePort");
        m_midi->isOpen = false;
    }
    bool isAlive() override { return m_midi->alive; }
    bool hasRoomFor(std::size_t) override { return m_midi->alive && m_midi->hasRoom; }
    bool isAllSent() override { return m_midi->allSent; }
    void sendMessage(const std::vector<unsigned char> &message) override
    {
        m_midi->called("sendMessage");
        m_midi->sent.push_back(message);
    }
    void setCallback(Callback callback) override
    {
        m_midi->called("setCallback");
        m_midi->callback = std::move(callback);
    }

private:
    std::shared_ptr<FakeMidi> m_midi;
};
