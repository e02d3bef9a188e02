#pragma once

#include "device/DeviceSearch.h"
#include "device/LineDecoder.h"
#include "device/PortFinder.h"
#include "device/SerialPort.h"

#include <QByteArray>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

/// The link to the control surface: finds and opens its port, decodes what it reports, notices its loss.
///
/// Looks for the device every 500 ms for its whole life, so a plug or unplug is noticed at most that late. A
/// port that reports an error is closed at once and looked for anew by the next scan. Lives on the GUI
/// thread. Slots connected to the signals may call back into this object; they must not delete it.
class SerialProtocol : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SerialProtocol)

public:
    static constexpr int scanIntervalMs = 500;
    static constexpr qint32 baudRate = 115200;
    static constexpr int buttonCount = 10;
    /// Two command characters, a signed number, a signed type code.
    static constexpr int minRequestBytes = 4;

    explicit SerialProtocol(std::unique_ptr<PortFinder> finder,
                            SerialPortFactory createPort = defaultPortFactory(), QObject *parent = nullptr);
    ~SerialProtocol() override;

    /// True from the opening of the device's port until a scan has found it gone.
    bool isConnected() const { return m_connected; }

    /// What the last look for the device has come to.
    const DeviceFinding &finding() const { return m_finding; }

    /// Appends a request for the device to the queue that all links share. It goes out as it stands with
    /// becomesAvailable2Request(); plugging the device in empties the queue. GUI thread only.
    static void queueRequest(const QByteArray &request);

Q_SIGNALS:
    /// "ZR" when the device's port has been opened, a null string when it has gone away.
    void portChange(QString deviceName);
    /// The device may take the next request. Nothing emits it yet.
    void becomesAvailable2Request();
    /// A button, 0 to 9, went down or up. On loss of the device all ten go up, pressed or not.
    void onButtonpress(int button, bool pressing);
    /// The knob was touched, let go or turned a step, as the character says.
    void onKnobevent(char type); // clazy:exclude=overloaded-signal (both are part of the interface)
    /// The knob was turned by @p count steps.
    void onKnobevent(int count); // clazy:exclude=overloaded-signal
    /// The device is gone: the releases of its buttons follow, then portChange().
    void aboutToUnplug();
    /// The device's port is there and cannot be opened, for the system's reason @p reason; emitted when the
    /// reason changes. Empty when that is over.
    void portRefused(QString reason);
    /// finding() has changed.
    void findingChanged();

public Q_SLOTS:
    /// Looks once for the device and opens or gives up its port.
    void scannSerial();
    /// Decodes what the port has received. Does nothing without an open port.
    void readSerial();
    /// Sends the oldest queued request; drops it when the device is not ready for one.
    void processNextRequest();

private:
    static SerialPortFactory defaultPortFactory();
    std::unique_ptr<SerialPort> newPort();
    void plug(const PortDescription &port);
    void unplug();
    void reportFailedOpen(const PortDescription &port);
    void forgetFailedOpen();
    void setFinding(const DeviceFinding &finding);
    void noteError(SerialPort::Error error);
    void closeLostPort();
    void announce(const DeviceEvent &event);

    static QList<QByteArray> s_requestQueue;
    static QMutex s_requestMutex;
    static bool s_readyForRequest;

    std::unique_ptr<PortFinder> m_finder;
    SerialPortFactory m_createPort;
    QTimer m_scanTimer{this};
    bool m_connected = false;
    /// The open port has reported an error; the next scan gives it up.
    bool m_linkLost = false;
    /// The loss of the device is being announced.
    bool m_unplugging = false;
    std::unique_ptr<SerialPort> m_port;
    LineDecoder m_decoder;
    QString m_lastFailure;
    SerialPort::Error m_openError = SerialPort::Error::None;
    DeviceSearch m_search;
    DeviceFinding m_finding;
};
