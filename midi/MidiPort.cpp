#include "midi/MidiPort.h"

#include "midi/MidiLog.h"

#include <exception>
#include <utility>

MidiPort::MidiPort(std::unique_ptr<MidiBackend> backend, QObject *parent)
    : QObject(parent)
    , m_backend(std::move(backend))
{
}

MidiPort::~MidiPort() = default;

bool MidiPort::attempt(const std::function<void()> &call)
{
    try {
        call();
        return true;
    } catch (const std::exception &error) {
        qCWarning(lcMidi).noquote() << QString::fromLocal8Bit(error.what());
        return false;
    }
}

QStringList MidiPort::portNames()
{
    QStringList names;
    const auto count = static_cast<unsigned int>(portCount());
    attempt([&] {
        for (unsigned int index = 0; index < count; ++index) {
            names.append(QString::fromLatin1(QByteArray::fromStdString(m_backend->portName(index))));
        }
    });
    return names;
}

int MidiPort::portCount()
{
    int count = 0;
    if (m_backend) {
        attempt([&] { count = static_cast<int>(m_backend->portCount()); });
    }
    return count;
}

int MidiPort::openPort(int index, const std::string &name)
{
    if (m_open) {
        return 0;
    }
    // The library reads past the end of its own list when it is asked for a port that is not there.
    if (index < 0 || index >= portCount()) {
        qCWarning(lcMidi) << "there is no MIDI port with number" << index;
        return 1;
    }
    m_open = attempt([&] { m_backend->openPort(static_cast<unsigned int>(index), name); });
    return m_open ? 0 : 1;
}

bool MidiPort::closePort()
{
    const bool closed = !m_open || attempt([this] { m_backend->closePort(); });
    m_open = false;
    return closed;
}
