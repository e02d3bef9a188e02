#include "midi/JackServerWatch.h"

#include "midi/MidiLog.h"

namespace
{

void logJack(const char *text)
{
    qCDebug(lcMidi) << "JACK:" << text;
}

jack_client_t *openClient()
{
    // The library prints to standard error otherwise, several lines when there simply is no server.
    jack_set_error_function(logJack);
    jack_set_info_function(logJack);
    return jack_client_open("Veltrix watch", JackNoStartServer, nullptr);
}

} // namespace

std::unique_ptr<JackServerWatch> JackServerWatch::connect()
{
    jack_client_t *client = openClient();
    if (client == nullptr) {
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
    jack_client_t *client = openClient();
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

std::set<std::string> JackServerWatch::sourcesOf(const std::string &name) const
{
    const jack_port_t *port = jack_port_by_name(m_client, name.c_str());
    const char **connected = port ? jack_port_get_all_connections(m_client, port) : nullptr;
    std::set<std::string> sources;
    for (const char **each = connected; each && *each; ++each) {
        sources.insert(*each);
    }
    jack_free(connected);
    return sources;
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
