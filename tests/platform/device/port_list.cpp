// Says what a list of ports tells, a line for each of standard input:
//
//   look                   the ports, and whether the stamp has moved since the last look
//   come NAME SERIAL HEX   the double alone: a port appears, with a serial number and a product identifier
//   go NAME                the double alone: it vanishes
//
// Usage: port_list real|double

#include "device/QtPortLister.h"
#include "tests/unit/device/FakePortLister.h"

#include <QStringList>

#include <algorithm>
#include <iostream>
#include <string>

namespace
{

QString answer(PortLister &lister, std::optional<qint64> &stamp)
{
    const std::optional<qint64> before = stamp;
    stamp = lister.changeStamp();
    QStringList words{!stamp            ? QStringLiteral("none")
                      : before == stamp ? QStringLiteral("same")
                                        : QStringLiteral("moved")};
    for (const PortDescription &port : lister.availablePorts()) {
        if (port.portName.startsWith(QLatin1String("ttyACM"))) {
            words.append(QStringLiteral("%1 %2 %3 %4")
                             .arg(port.portName, port.systemLocation, port.serialNumber)
                             .arg(port.productIdentifier, 4, 16, QLatin1Char('0')));
        }
    }
    return words.join(QLatin1String(", "));
}

void change(FakePortLister &lister, const QStringList &words)
{
    QVector<PortDescription> ports = lister.ports;
    const QString name = words.at(1);
    if (words.size() == 4) {
        PortDescription port = devicePort(name);
        port.serialNumber = words.at(2);
        port.productIdentifier = words.at(3).toUShort(nullptr, 16);
        ports.append(port);
    } else {
        ports.erase(std::remove_if(ports.begin(), ports.end(),
                                   [&name](const PortDescription &port) { return port.portName == name; }),
                    ports.end());
    }
    lister.show(ports);
}

} // namespace

int main(int argc, char **argv)
{
    QtPortLister real;
    FakePortLister ours;
    const bool isReal = argc > 1 && std::string(argv[1]) == "real";
    PortLister &lister = isReal ? static_cast<PortLister &>(real) : ours;
    std::optional<qint64> stamp = lister.changeStamp();
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "look") {
            std::cout << answer(lister, stamp).toStdString() << std::endl;
        } else if (!isReal) {
            change(ours, QString::fromStdString(line).split(QLatin1Char(' ')));
        }
    }
    return 0;
}
