#include "device/QtPortLister.h"

#include <QSerialPortInfo>
#include <QSysInfo>

#include <system_error>

QtPortLister::QtPortLister()
{
    // Elsewhere a folder "/dev" may well exist (on the current drive, say) and have nothing to do with ports.
    if (QSysInfo::kernelType() == QLatin1String("linux")) {
        m_deviceFolder = "/dev";
    }
}

QVector<PortDescription> QtPortLister::availablePorts()
{
    QVector<PortDescription> ports;
    const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
    ports.reserve(infos.size());
    for (const QSerialPortInfo &info : infos) {
        ports.append({info.portName(), info.systemLocation(), info.serialNumber(), info.productIdentifier(),
                      info.description()});
    }
    return ports;
}

std::optional<qint64> QtPortLister::changeStamp()
{
    if (m_deviceFolder.empty()) {
        return std::nullopt;
    }
    std::error_code error;
    const auto modified = std::filesystem::last_write_time(m_deviceFolder, error);
    if (error) {
        return std::nullopt;
    }
    return static_cast<qint64>(modified.time_since_epoch().count());
}
