#pragma once

#include "tools/simulator/DevicePort.h"

#include <QByteArrayList>

/// A cable that keeps what it is asked for, a line each, and what arrives at the program. Compared with the
/// real ones by tst_CableDouble.
class FakePort final : public simulator::DevicePort
{
    Q_DISABLE_COPY_MOVE(FakePort)

public:
    FakePort() = default;

    bool plug() override
    {
        log.append("(plug)");
        plugged = plugged || !refusePlug;
        return plugged;
    }

    void unplug() override
    {
        log.append("(unplug)");
        plugged = false;
        opened = false;
    }

    bool isPlugged() const override { return plugged; }
    bool isOpened() const override { return opened; }
    bool isDelivered() const override { return delivered || !opened; }
    QString errorString() const override { return QStringLiteral("refused"); }
    void send(const QByteArray &bytes) override
    {
        log.append(bytes.simplified());
        if (opened) {
            arrived += bytes;
        }
    }

    QByteArrayList take()
    {
        const QByteArrayList taken = log;
        log.clear();
        return taken;
    }

    QByteArrayList log;
    QByteArray arrived;
    bool plugged = true;
    bool opened = true;
    bool delivered = true;
    bool refusePlug = false;
};
