#pragma once

#include "device/PortHolder.h"
#include "device/PortLister.h"
#include "device/SerialPort.h"

#include <QString>
#include <QVector>

class PortFinder;

/// What a look for the device has come to.
struct DeviceFinding {
    enum class Kind {
        NotLooked,    ///< nobody has looked yet
        Nothing,      ///< there is no port of any device
        NamedMissing, ///< the port that the user named is not there, nor another one of the device's
        Other,        ///< there are ports of devices, and none is ours
        Forbidden,    ///< the port is there, and this user may not open it
        Held,         ///< another program has it
        Refused,      ///< it cannot be opened for another reason
        Vanishing,    ///< the device has come and gone several times lately, and is not there now
        Open,         ///< the port is open
    };

    Kind kind = Kind::NotLooked;
    QString port;      ///< the path, or name, of the port in question; empty where there is none
    QString detail;    ///< Other: what the device calls itself, if known; Forbidden: the group that may, if
                       ///< there is a special one; Refused: the system's reason
    PortHolder holder; ///< Held

    bool operator==(const DeviceFinding &other) const;
    bool operator!=(const DeviceFinding &other) const { return !(*this == other); }
};

/// Finds out why there is no device. Time is counted in looks: the one who looks for the device says when.
class DeviceSearch
{
public:
    /// So many losses within so many looks (a minute of scans) are no coincidence.
    static constexpr int losses = 3;
    static constexpr int looksForLosses = 120;

    /// Another look for the device begins.
    void look() { ++m_looks; }
    /// A device that was there has gone.
    void lost();

    /// What it means that there is no port of the device.
    DeviceFinding absent(const PortFinder &finder) const;

    /// What it means that @p port cannot be opened. Asks the system (PortHolder), so not at every look.
    static DeviceFinding refused(const PortDescription &port, SerialPort::Error error, const QString &reason);

private:
    int m_looks = 0;
    QVector<int> m_lost; // the looks of the last losses
};
