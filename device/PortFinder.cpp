#include "device/PortFinder.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace
{

constexpr quint16 deviceProduct = 0x9206;

bool isDevice(const PortDescription &port)
{
    return port.serialNumber.contains(QLatin1String("HIDFG"), Qt::CaseSensitive) ||
           port.productIdentifier == deviceProduct;
}

template <typename Predicate>
std::optional<PortDescription> firstOf(const QVector<PortDescription> &ports, Predicate matches)
{
    const auto found = std::find_if(ports.cbegin(), ports.cend(), matches);
    return found == ports.cend() ? std::nullopt : std::make_optional(*found);
}

} // namespace

PortFinder::PortFinder(std::unique_ptr<PortLister> lister, const QString &explicitPort)
    : m_lister(std::move(lister))
    , m_explicitName(explicitPort)
    , m_explicitPath(explicitPort.isEmpty() ? QString() : QFileInfo(explicitPort).absoluteFilePath())
{
}

std::optional<PortDescription> PortFinder::find()
{
    if (auto port = explicitPath()) {
        return port;
    }
    if (mayHaveChanged()) {
        const QVector<PortDescription> before = std::exchange(m_ports, m_lister->availablePorts());
        lookOnAtBarePorts(before);
        m_lastAnswer = walk();
    }
    return m_lastAnswer;
}

void PortFinder::lookAgain()
{
    m_fullLooksDue = qMax(m_fullLooksDue, 1);
}

bool PortFinder::mayHaveChanged()
{
    const std::optional<qint64> stamp = m_lister->changeStamp();
    if (!stamp || stamp != m_stamp) {
        m_stamp = stamp;
        m_fullLooksDue = 1 + settlingLooks;
    }
    if (m_fullLooksDue > 0) {
        --m_fullLooksDue;
        m_cheapLooks = 0;
        return true;
    }
    if (++m_cheapLooks > cheapLooksAtMost) {
        m_cheapLooks = 0;
        return true;
    }
    return false;
}

// A port's properties may come seconds after it, and leave no trace in the folder.
void PortFinder::lookOnAtBarePorts(const QVector<PortDescription> &before)
{
    QHash<QString, int> bare;
    for (const PortDescription &port : qAsConst(m_ports)) {
        const bool known = std::any_of(before.cbegin(), before.cend(), [&port](const PortDescription &each) {
            return each.portName == port.portName;
        });
        const int left = known ? m_bare.value(port.portName) - 1 : looksAtBarePort;
        if (!port.isOfDevice() && left > 0) {
            bare.insert(port.portName, left);
        }
    }
    // The ports of the machine itself never have any.
    m_bare = std::exchange(m_looked, true) ? bare : QHash<QString, int>();
    if (!m_bare.isEmpty()) {
        lookAgain();
    }
}

std::optional<PortDescription> PortFinder::explicitPath() const
{
    if (m_explicitPath.isEmpty()) {
        return std::nullopt;
    }
    // The link's target and not the link: the port's lock is named after its last path component, and two
    // users' links of one name must not lock each other out. Empty when there is no such file or the link
    // dangles.
    const QString target = QFileInfo(m_explicitPath).canonicalFilePath();
    if (target.isEmpty()) {
        return std::nullopt;
    }
    return PortDescription{m_explicitName, target, QString(), 0};
}

std::optional<PortDescription> PortFinder::walk() const
{
    if (!m_explicitName.isEmpty()) {
        // Where ports are no files ("COM3") the list says whether the named one exists.
        auto named = firstOf(m_ports, [this](const PortDescription &port) {
            return port.portName == m_explicitName || port.systemLocation == m_explicitName;
        });
        if (named) {
            return named;
        }
    }
    return firstOf(m_ports, isDevice);
}
