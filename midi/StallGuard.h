#pragma once

#include "midi/MidiBackend.h"
#include "midi/SendBudget.h"
#include "midi/ServerWatch.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

/// Keeps a MIDI system that talks to a server from holding up its caller.
///
/// Such a library waits for the server's answer when it connects, opens and closes, and when its queue is
/// full it waits for the server's next cycle, in both cases without end when the server stands still. So the
/// calls that need an answer run on a thread that is given up when the answer does not come; after that the
/// backend counts as gone. Sending needs no answer and stays on the caller's thread, and room in the queue is
/// proven beforehand from the cycles that the watch counts.
class StallGuard final : public MidiBackend
{
    Q_DISABLE_COPY_MOVE(StallGuard)

public:
    /// A backend and the watch over its server. The backend is closed and destroyed first, and with a watch
    /// not before the server has fetched what was sent, and the cycle in which it was closed is over.
    struct Guarded {
        std::unique_ptr<ServerWatch> watch; ///< may be null for a backend that never sends
        std::unique_ptr<MidiBackend> backend;
    };

    /// How long an answer of the server is waited for. A healthy one needs about 20 ms; a library that
    /// notices only while closing that its server has gone needs a second.
    static constexpr std::chrono::milliseconds patience{2000};

    /// Calls @p make, which may wait for the server. Null when it made no backend or did not come back in
    /// time; what it throws is passed on.
    static std::unique_ptr<StallGuard> create(std::function<Guarded()> make,
                                              std::chrono::milliseconds limit = patience);
    ~StallGuard() override;

    unsigned int portCount() override;
    std::string portName(unsigned int index) override;
    void openPort(unsigned int index, const std::string &name) override;
    void closePort() override;
    bool isAlive() override;
    bool hasRoomFor(std::size_t bytes) override;
    bool isAllSent() override;
    bool isConnected() override;
    void sendMessage(const std::vector<unsigned char> &message) override;
    void setCallback(Callback callback) override;

private:
    StallGuard(std::shared_ptr<Guarded> guarded, std::chrono::milliseconds limit);

    /// What the port that was opened is called, what we are called there, and which ports there were before
    /// that could be connected to it. The connections of before are no measure: they may still name a port
    /// whose place another one has.
    struct Opened {
        std::string port;
        std::string name;
        std::set<std::string> sourcesBefore;
    };

    void ask(std::function<void(MidiBackend &)> question);

    std::shared_ptr<Guarded> m_guarded; // shared with a call that is under way
    std::chrono::milliseconds m_limit;
    SendBudget m_budget;
    Opened m_opened;
    std::optional<quint32> m_openedAt; // the count of cycles when the port was opened
    std::optional<quint32> m_sentAt;   // the same at the last message
    bool m_answers = true;
};
