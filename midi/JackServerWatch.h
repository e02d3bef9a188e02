#pragma once

#include "midi/ServerWatch.h"

#include <atomic>
#include <jack/jack.h>
#include <memory>

/// Watches a JACK server as a client of its own, without ports: the server's thread in this process counts
/// the cycles and tells when the server has ended.
class JackServerWatch final : public ServerWatch
{
    Q_DISABLE_COPY_MOVE(JackServerWatch)

public:
    /// Null when the server refuses; throws MidiSystemAbsent when none runs; none is started. Waits for the
    /// server's answer.
    static std::unique_ptr<JackServerWatch> connect();

    /// Whether a server runs. Waits for the server's answer.
    static bool serverRuns();

    ~JackServerWatch() override;

    bool isGone() const override { return m_gone; }
    quint32 cycles() const override { return m_cycles; }
    std::set<std::string> sources() const override;
    std::optional<std::set<std::string>> sourcesOf(const std::string &name) const override;

private:
    explicit JackServerWatch(jack_client_t *client);

    static int onCycle(jack_nframes_t frames, void *self);
    static void onShutdown(void *self);

    jack_client_t *m_client; // the library's; closed by the destructor
    std::atomic<bool> m_gone{false};
    std::atomic<quint32> m_cycles{0};
};
