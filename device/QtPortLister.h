#pragma once

#include "device/PortLister.h"

#include <filesystem>

/// The serial ports of this system.
class QtPortLister : public PortLister
{
    Q_DISABLE_COPY_MOVE(QtPortLister)

public:
    QtPortLister();

    QVector<PortDescription> availablePorts() override;
    std::optional<qint64> changeStamp() override;

private:
    /// The folder whose modification time tells that a port came or went; empty where there is none.
    std::filesystem::path m_deviceFolder;
};
