#include "device/DeviceSearch.h"

#include "device/PortFinder.h"
#include "device/PortLocks.h"

#include <QFileInfo>

#include <algorithm>

namespace
{

/// The group that may use the port, where joining it is of use.
QString groupOf(const QFileInfo &port)
{
    const bool special = port.groupId() != 0 && port.permissions().testFlag(QFile::ReadGroup) &&
                         port.permissions().testFlag(QFile::WriteGroup);
    return special ? port.group() : QString();
}

} // namespace

bool DeviceFinding::operator==(const DeviceFinding &other) const
{
    return kind == other.kind && port == other.port && detail == other.detail &&
           holder.process == other.holder.process;
}

void DeviceSearch::lost()
{
    m_lost.append(m_looks);
    if (m_lost.size() > losses) {
        m_lost.removeFirst();
    }
}

DeviceFinding DeviceSearch::absent(const PortFinder &finder) const
{
    if (m_lost.size() == losses && m_looks - m_lost.constFirst() < looksForLosses) {
        return {DeviceFinding::Kind::Vanishing, {}, {}, {}};
    }
    if (!finder.namedPort().isEmpty()) {
        return {DeviceFinding::Kind::NamedMissing, finder.namedPort(), {}, {}};
    }
    const QVector<PortDescription> &ports = finder.ports();
    const auto other = std::find_if(ports.cbegin(), ports.cend(),
                                    [](const PortDescription &port) { return port.isOfDevice(); });
    if (other == ports.cend()) {
        return {DeviceFinding::Kind::Nothing, {}, {}, {}};
    }
    return {DeviceFinding::Kind::Other, other->systemLocation, other->description, {}};
}

DeviceFinding DeviceSearch::refused(const PortDescription &port, SerialPort::Error error,
                                    const QString &reason)
{
    const QFileInfo file(port.systemLocation);
    if (file.exists() && !(file.isReadable() && file.isWritable())) {
        return {DeviceFinding::Kind::Forbidden, port.systemLocation, groupOf(file), {}};
    }
    if (error == SerialPort::Error::Permission && !PortLocks::haveNoPlace()) {
        return {DeviceFinding::Kind::Held, port.systemLocation, {}, PortHolder::of(port.systemLocation)};
    }
    return {DeviceFinding::Kind::Refused, port.systemLocation, reason, {}};
}
