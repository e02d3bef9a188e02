#include "midi/JackServerWatch.h"

#include "midi/MidiLog.h"
#include "midi/MidiSystem.h"

namespace
{

void logJack(const char *text)
{
    qCDebug(lcMidi) << "JACK:" << text;
}

jack_client_t *openClient(jack_status_t *status)
{
    // The library prints to standard error otherwise, several lines when there simply is no server.
    jack_set_error_function(logJack);
    jack_set_info_function(logJack);
    return jack_client_open("Veltrix watch", JackNoStartServer, status);
}

// The list is the library's until here, and may be null.
std::set<std::string> taken(const char **list)
{
    std::set<std::string> names;
    for (const char **each = list; each && *each; ++each) {
        names.insert(*each);
    }
    jack_free(list);
    return names;
}

} // namespace

std::unique_ptr<JackServerWatch> JackServerWatch::connect()
{
    jack_status_t status{};
    jack_client_t *client = openClient(&status);
    if (client == nullptr) {
        // The one failure that needs no server: its socket takes no connection.
        if ((status & JackServerFailed) != 0) {
            throw MidiSystemAbsent("no server runs");
        }
        return nullptr;
    }
    std::unique_ptr<JackServerWatch> watch(new JackServerWatch(client));
    jack_set_process_callback(client, &JackServerWatch::onCycle, watch.get());
    jack_on_shutdown(client, &JackServerWatch::onShutdown, watch.get());
    if (jack_activate(client) != 0) {
        return nullptr;
    }
    return watch;
}

bool JackServerWatch::serverRuns()
{
    jack_client_t *client = openClient(nullptr);
    if (client == nullptr) {
        return false;
    }
    jack_client_close(client);
    return true;
}

JackServerWatch::JackServerWatch(jack_client_t *client)
    : m_client(client)
{
}

JackServerWatch::~JackServerWatch()
{
    jack_client_close(m_client);
}

std::set<std::string> JackServerWatch::sources() const
{
    return taken(jack_get_ports(m_client, nullptr, JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput));
}

std::optional<std::set<std::string>> JackServerWatch::sourcesOf(const std::string &name) const
{
    const jack_port_t *port = jack_port_by_name(m_client, name.c_str());
    return port ? std::make_optional(taken(jack_port_get_all_connections(m_client, port))) : std::nullopt;
}

int JackServerWatch::onCycle(jack_nframes_t, void *self)
{
    ++static_cast<JackServerWatch *>(self)->m_cycles;
    return 0;
}

void JackServerWatch::onShutdown(void *self)
{
    static_cast<JackServerWatch *>(self)->m_gone = true;
}
