#pragma once

#include "device/PortLister.h"

/// A port list that the test holds, compared with the real ones by tst_PortListDouble and tst_PortDoubles.
/// The stamp moves with show() as a device folder's does; quietly() leaves it.
class FakePortLister : public PortLister
{
public:
    QVector<PortDescription> availablePorts() override
    {
        ++fullLooks;
        return ports;
    }
    std::optional<qint64> changeStamp() override
    {
        ++cheapLooks;
        return hasStamp ? std::make_optional(stamp) : std::nullopt;
    }

    void show(const QVector<PortDescription> &list)
    {
        ports = list;
        ++stamp;
    }
    void quietly(const QVector<PortDescription> &list) { ports = list; }

    QVector<PortDescription> ports;
    qint64 stamp = 1000;
    bool hasStamp = true;
    int fullLooks = 0;
    int cheapLooks = 0;
};

inline PortDescription portWithSerial(const QString &name, const QString &serialNumber)
{
    return {name, QStringLiteral("/dev/") + name, serialNumber, 0x1234};
}

inline PortDescription portWithProduct(const QString &name, quint16 product)
{
    return {name, QStringLiteral("/dev/") + name, QString(), product};
}

/// The device as it usually shows up.
inline PortDescription devicePort(const QString &name = QStringLiteral("ttyACM0"))
{
    return {name, QStringLiteral("/dev/") + name, QStringLiteral("HIDFG0001"), 0x9206};
}
