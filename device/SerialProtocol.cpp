#include "device/SerialProtocol.h"

#include "device/DeviceLog.h"
#include "device/SystemPorts.h"

#include <QMetaEnum>
#include <QMutexLocker>
#include <QScopedValueRollback>

QList<QByteArray> SerialProtocol::s_requestQueue;
QMutex SerialProtocol::s_requestMutex;
bool SerialProtocol::s_readyForRequest = false;

namespace
{

bool endsLink(SerialPort::Error error)
{
    switch (error) {
    case SerialPort::Error::Read:
    case SerialPort::Error::Write:
    case SerialPort::Error::Resource:
    case SerialPort::Error::Permission:
        return true;
    default:
        // Above all UnsupportedOperation: a pseudo terminal has no DTR line and works without.
        return false;
    }
}

} // namespace

SerialProtocol::SerialProtocol(std::unique_ptr<PortFinder> finder, SerialPortFactory createPort,
                               QObject *parent)
    : QObject(parent)
    , m_finder(std::move(finder))
    , m_createPort(std::move(createPort))
    , m_port(newPort())
{
    m_scanTimer.setInterval(scanIntervalMs);
    connect(&m_scanTimer, &QTimer::timeout, this, &SerialProtocol::scannSerial);
    m_scanTimer.start();
    connect(this, &SerialProtocol::becomesAvailable2Request, this, &SerialProtocol::processNextRequest);
}

SerialProtocol::~SerialProtocol()
{
    if (m_port) {
        m_port->disconnect(this); // closing it must not call back into what is being taken apart
    }
}

SerialPortFactory SerialProtocol::defaultPortFactory()
{
    return systemports::portFactory();
}

std::unique_ptr<SerialPort> SerialProtocol::newPort()
{
    auto port = m_createPort();
    connect(port.get(), &SerialPort::errorOccurred, this, &SerialProtocol::noteError);
    return port;
}

void SerialProtocol::scannSerial()
{
    if (m_unplugging) {
        // A slot asks from within the announcement of the loss. Plugging in now would be undone by the rest
        // of it.
        return;
    }
    m_search.look();
    if (m_linkLost) {
        unplug();
        m_finder->lookAgain();
    }
    const std::optional<PortDescription> port = m_finder->find();
    if (port && !m_connected) {
        plug(*port);
    } else if (!port) {
        forgetFailedOpen();
        if (m_connected) {
            unplug();
        }
        setFinding(m_search.absent(*m_finder));
    }
}

void SerialProtocol::plug(const PortDescription &port)
{
    if (!m_port) {
        m_port = newPort();
    }
    m_port->setPort(port);
    m_port->setBaudRate(baudRate);
    m_port->clearError();
    m_openError = SerialPort::Error::None;
    m_connected = m_port->open(QIODevice::ReadWrite);
    if (!m_connected) {
        reportFailedOpen(port);
        m_finder->lookAgain();
        return;
    }
    forgetFailedOpen();
    setFinding({DeviceFinding::Kind::Open, port.systemLocation, {}, {}});
    m_port->setDataTerminalReady(true);
    s_requestQueue.clear();
    m_decoder.clear();
    {
        const QMutexLocker locker(&s_requestMutex);
        s_readyForRequest = true;
    }
    connect(m_port.get(), &SerialPort::readyRead, this, &SerialProtocol::readSerial);
    Q_EMIT portChange(QStringLiteral("ZR"));
    qCInfo(lcDevice) << "plugged";
}

void SerialProtocol::unplug()
{
    m_connected = false;
    m_linkLost = false;
    m_search.lost();
    m_decoder.clear();
    if (m_port->isOpen()) {
        m_port->setDataTerminalReady(false);
        m_port->close();
    }
    m_port->disconnect(this);
    // Not at once: the scan may have been called from a slot of the port's own signal.
    m_port.release()->deleteLater();

    const QScopedValueRollback<bool> announcing(m_unplugging, true);
    Q_EMIT aboutToUnplug();
    for (int button = 0; button < buttonCount; ++button) {
        Q_EMIT onButtonpress(button, false);
    }
    Q_EMIT portChange(QString());
    qCInfo(lcDevice) << "unplugged";
}

void SerialProtocol::reportFailedOpen(const PortDescription &port)
{
    // A port may refuse for hours, twice a second: only news is worth a warning, and a search for the reason.
    const QString reason = m_port->errorString();
    const bool holderEnded = m_finding.holder.process != 0 && !m_finding.holder.isThere();
    if (reason != m_lastFailure || port.systemLocation != m_finding.port || holderEnded) {
        setFinding(DeviceSearch::refused(port, m_openError, reason));
    }
    if (reason != m_lastFailure) {
        m_lastFailure = reason;
        qCWarning(lcDevice).noquote() << "failed to plugg" << reason;
        Q_EMIT portRefused(reason);
    } else {
        qCDebug(lcDevice).noquote() << "failed to plugg" << reason;
    }
}

void SerialProtocol::forgetFailedOpen()
{
    if (!m_lastFailure.isEmpty()) {
        m_lastFailure.clear();
        Q_EMIT portRefused(QString());
    }
}

void SerialProtocol::setFinding(const DeviceFinding &finding)
{
    if (finding != m_finding) {
        m_finding = finding;
        Q_EMIT findingChanged();
    }
}

void SerialProtocol::noteError(SerialPort::Error error)
{
    if (!m_connected && error != SerialPort::Error::None) {
        m_openError = error;
    }
    if (!m_connected || m_linkLost || !endsLink(error)) {
        return;
    }
    m_linkLost = true;
    // Not the port's error text: after a hang-up it is that of whatever call failed last.
    qCWarning(lcDevice).noquote() << "lost the device:"
                                  << QMetaEnum::fromType<SerialPort::Error>().valueToKey(int(error))
                                  << "error";
    // A port that hangs reports errors without end until it is closed, and must not be closed from its own
    // signal.
    QMetaObject::invokeMethod(this, &SerialProtocol::closeLostPort, Qt::QueuedConnection);
}

void SerialProtocol::closeLostPort()
{
    readSerial(); // what came before the hang-up still counts
    if (m_linkLost) {
        m_port->close();
    }
}

void SerialProtocol::readSerial()
{
    if (!m_port || !m_port->isOpen()) {
        return;
    }
    m_decoder.append(m_port->readAll());
    // A slot may scan and so lose the port: the decoder is empty then and the loop ends.
    while (const auto event = m_decoder.next()) {
        announce(*event);
    }
}

void SerialProtocol::announce(const DeviceEvent &event)
{
    switch (event.kind) {
    case DeviceEvent::Kind::Button:
        Q_EMIT onButtonpress(event.button, event.pressing);
        break;
    case DeviceEvent::Kind::KnobType:
        Q_EMIT onKnobevent(event.type);
        break;
    case DeviceEvent::Kind::KnobCount:
        Q_EMIT onKnobevent(event.count);
        break;
    }
}

void SerialProtocol::queueRequest(const QByteArray &request)
{
    s_requestQueue.append(request);
}

void SerialProtocol::processNextRequest()
{
    if (s_requestQueue.isEmpty()) {
        return;
    }
    const QByteArray request = s_requestQueue.takeFirst();
    if (request.size() < minRequestBytes) {
        qCWarning(lcDevice) << "dropped a request of" << request.size() << "bytes";
        return;
    }
    const QMutexLocker locker(&s_requestMutex);
    if (!s_readyForRequest || !m_port || !m_port->isOpen()) {
        return;
    }
    s_readyForRequest = false;
    m_port->write(request);
    m_port->flush();
    qCDebug(lcDevice).nospace() << "Send request - " << request.at(0) << request.at(1)
                                << " number:" << static_cast<int>(static_cast<signed char>(request.at(2)))
                                << " type:" << static_cast<int>(static_cast<signed char>(request.at(3)));
}
