#include "device/TcpAddress.h"

namespace
{

const QLatin1String scheme("tcp:");
const QLatin1String thisComputer("tcp:127.0.0.1:");

} // namespace

bool TcpAddress::isMeant(const QString &text)
{
    return text.startsWith(scheme);
}

std::optional<TcpAddress> TcpAddress::parse(const QString &text)
{
    if (!text.startsWith(thisComputer)) {
        return std::nullopt;
    }
    const QString number = text.mid(thisComputer.size());
    bool ok = !number.isEmpty() && number.at(0).isDigit();
    const quint16 port = ok ? number.toUShort(&ok) : quint16(0);
    if (!ok || port == 0) {
        return std::nullopt;
    }
    return TcpAddress{port};
}

QString TcpAddress::toString() const
{
    return thisComputer + QString::number(port);
}
