#pragma once

#include "tools/simulator/DevicePort.h"

#include <QByteArrayList>

/// A cable that keeps what goes through it, a line each.
class FakePort final : public simulator::DevicePort
{
    Q_DISABLE_COPY_MOVE(FakePort)

public:
    FakePort() = default;

    bool plug() override
    {
        log.append("(plug)");
        plugged = !refusePlug;
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
    bool isDelivered() const override { return delivered; }
    QString errorString() const override { return QStringLiteral("refused"); }
    void send(const QByteArray &bytes) override { log.append(bytes.simplified()); }

    QByteArrayList take()
    {
        const QByteArrayList taken = log;
        log.clear();
        return taken;
    }

    QByteArrayList log;
    bool plugged = true;
    bool opened = true;
    bool delivered = true;
    bool refusePlug = false;
};
