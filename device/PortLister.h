#pragma once

#include <QString>
#include <QVector>
#include <QtGlobal>

#include <optional>

/// One serial port as the system describes it.
struct PortDescription {
    /// The short name: "ttyACM0", "COM3".
    QString portName;
    /// What has to be opened: "/dev/ttyACM0", "\\.\COM3".
    QString systemLocation;
    /// The USB device's serial number, empty when it has none.
    QString serialNumber;
    /// The USB product identifier, 0 when there is none.
    quint16 productIdentifier = 0;
    /// What the USB device calls itself, for people; empty when that is not known.
    QString description = QString();

    /// Whether the system knows anything of what the port belongs to. It knows nothing of the machine's own.
    bool isOfDevice() const { return !serialNumber.isEmpty() || productIdentifier != 0; }
};

/// Lists the serial ports. The real one is QtPortLister.
class PortLister
{
    Q_DISABLE_COPY_MOVE(PortLister)

public:
    PortLister() = default;
    virtual ~PortLister() = default;

    /// All ports in the system's order. Costs milliseconds.
    virtual QVector<PortDescription> availablePorts() = 0;

    /// A number that differs from the last one when a port may have come or gone since. Costs microseconds.
    /// Nothing where the system has no such thing: then every look has to be a full one.
    virtual std::optional<qint64> changeStamp() = 0;
};
