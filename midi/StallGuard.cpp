#include "midi/StallGuard.h"

#include "midi/BoundedCall.h"
#include "midi/MidiLog.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <thread>
#include <utility>

namespace
{

// RtMidi queues 16 KiB for JACK; a message takes its own bytes and an int. A quarter stays free.
constexpr std::size_t queueLimit = std::size_t{12} * 1024;
constexpr std::size_t overheadPerMessage = sizeof(int);

constexpr std::chrono::milliseconds betweenLooks(5);

// A server begins no cycle before the last one is over for all clients. The first step of the count may
// belong to the cycle that was under way at the beginning, the second is of a later one.
constexpr quint32 untilEndOfCycle = 2;

void awaitCycles(const ServerWatch &watch, quint32 since, quint32 count)
{
    while (watch.cycles() - since < count && !watch.isGone()) {
        std::this_thread::sleep_for(betweenLooks);
    }
}

// A port that is closed takes along what is in its queue. RtMidi waits for the end of a callback, but that
// one may have seen the queue empty before the last message was written.
void awaitFetched(const StallGuard::Guarded &guarded, std::optional<quint32> sentAt)
{
    if (guarded.watch && sentAt) {
        awaitCycles(*guarded.watch, *sentAt, SendBudget::cyclesUntilGone);
    }
}

// Waits for the server. RtMidi frees an output's queue before it ends the thread that reads it. That thread
// leaves the queue of a closed port alone, but only from its next cycle on.
void release(StallGuard::Guarded *guarded)
{
    const std::unique_ptr<StallGuard::Guarded> owned(guarded);
    if (!owned->backend || !owned->watch) {
        return;
    }
    try {
        owned->backend->closePort();
    } catch (const std::exception &error) {
        qCWarning(lcMidi).noquote() << QString::fromLocal8Bit(error.what());
    }
    awaitCycles(*owned->watch, owned->watch->cycles(), untilEndOfCycle);
}

// Of a "client:port", whether the port is called so.
bool isCalled(const std::string &source, const std::string &port)
{
    const std::size_t colon = source.rfind(':');
    return colon != std::string::npos && source.compare(colon + 1, std::string::npos, port) == 0;
}

bool releaseWithin(std::chrono::milliseconds limit, std::shared_ptr<StallGuard::Guarded> guarded,
                   std::optional<quint32> sentAt)
{
    return callWithin(limit, [guarded = std::move(guarded), sentAt]() mutable {
        awaitFetched(*guarded, sentAt);
        guarded.reset();
    });
}

} // namespace

std::unique_ptr<StallGuard> StallGuard::create(std::function<Guarded()> make, std::chrono::milliseconds limit)
{
    std::shared_ptr<Guarded> guarded(new Guarded, &release);
    if (!callWithin(limit, [guarded, make = std::move(make)] { *guarded = make(); })) {
        qCWarning(lcMidi) << "the MIDI server does not answer";
        releaseWithin(std::chrono::milliseconds::zero(), std::move(guarded), std::nullopt);
        return nullptr;
    }
    if (!guarded->backend) {
        return nullptr;
    }
    return std::unique_ptr<StallGuard>(new StallGuard(guarded, limit));
}

StallGuard::StallGuard(std::shared_ptr<Guarded> guarded, std::chrono::milliseconds limit)
    : m_guarded(std::move(guarded))
    , m_limit(limit)
    , m_budget(queueLimit)
{
}

StallGuard::~StallGuard()
{
    // A call that has not come back takes the rest along when it does, and is not waited for again.
    const std::chrono::milliseconds limit = m_answers ? m_limit : std::chrono::milliseconds::zero();
    try {
        if (!releaseWithin(limit, std::move(m_guarded), m_sentAt) && m_answers) {
            qCWarning(lcMidi) << "the MIDI server does not answer; its connection is left behind";
        }
    } catch (const std::exception &error) {
        qCWarning(lcMidi).noquote() << QString::fromLocal8Bit(error.what());
    }
}

void StallGuard::ask(std::function<void(MidiBackend &)> question)
{
    m_answers = m_answers && callWithin(m_limit, [guarded = m_guarded, question = std::move(question)] {
                    question(*guarded->backend);
                });
    if (!m_answers) {
        throw std::runtime_error("the MIDI server does not answer");
    }
}

unsigned int StallGuard::portCount()
{
    const auto count = std::make_shared<unsigned int>(0);
    ask([count](MidiBackend &backend) { *count = backend.portCount(); });
    return *count;
}

std::string StallGuard::portName(unsigned int index)
{
    const auto name = std::make_shared<std::string>();
    ask([name, index](MidiBackend &backend) { *name = backend.portName(index); });
    return *name;
}

void StallGuard::openPort(unsigned int index, const std::string &name)
{
    const auto opened = std::make_shared<Opened>();
    ask([guarded = m_guarded, opened, index, name](MidiBackend &backend) {
        if (guarded->watch) {
            opened->port = backend.portName(index);
            opened->name = name;
            opened->sourcesBefore = guarded->watch->sources();
        }
        backend.openPort(index, name);
    });
    m_opened = *opened;
    if (m_guarded->watch) {
        m_openedAt = m_guarded->watch->cycles();
    }
}

void StallGuard::closePort()
{
    ask([guarded = m_guarded, sentAt = m_sentAt](MidiBackend &backend) {
        awaitFetched(*guarded, sentAt);
        backend.closePort();
    });
}

bool StallGuard::isAlive()
{
    return m_answers && !(m_guarded->watch && m_guarded->watch->isGone());
}

bool StallGuard::hasRoomFor(std::size_t bytes)
{
    return isAlive() && m_guarded->watch &&
           m_budget.allows(bytes + overheadPerMessage, m_guarded->watch->cycles());
}

bool StallGuard::isAllSent()
{
    if (!m_guarded->watch) {
        return false;
    }
    const auto isOver = [now = m_guarded->watch->cycles()](std::optional<quint32> since) {
        return !since || now - *since >= SendBudget::cyclesUntilGone;
    };
    return isOver(m_openedAt) && isOver(m_sentAt);
}

// RtMidi ignores that a client was not activated, as happens while the server waits for one that has just
// died, and that its port was not connected. What other programs connect meanwhile is not ours.
bool StallGuard::isConnected()
{
    const auto connected = std::make_shared<bool>(true);
    ask([guarded = m_guarded, connected, opened = m_opened](MidiBackend &) {
        if (guarded->watch) {
            const std::set<std::string> &before = opened.sourcesBefore;
            const auto now = guarded->watch->sourcesOf(opened.port);
            *connected = !now || std::any_of(now->begin(), now->end(), [&](const std::string &source) {
                return before.count(source) == 0 && isCalled(source, opened.name);
            });
        }
    });
    return *connected;
}

void StallGuard::sendMessage(const std::vector<unsigned char> &message)
{
    m_guarded->backend->sendMessage(message);
    m_budget.spend(message.size() + overheadPerMessage);
    m_sentAt = m_guarded->watch->cycles();
}

void StallGuard::setCallback(Callback callback)
{
    m_guarded->backend->setCallback(std::move(callback));
}
