#include "tools/simulator/Cable.h"

#include "tools/simulator/TcpCable.h"

#include <QCoreApplication>

namespace simulator
{

std::unique_ptr<Cable> createCable(const Options &options, QString &error)
{
    // A program here cannot make a serial port.
    if (options.link) {
        error = QCoreApplication::translate("Cable", "--link needs pseudo-terminals; use --listen");
        return nullptr;
    }
    return std::make_unique<TcpCable>(options.listen.value_or(0));
}

bool hasDisplay()
{
    return true;
}

} // namespace simulator
