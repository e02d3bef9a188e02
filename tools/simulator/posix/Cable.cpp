#include "tools/simulator/Cable.h"

#include "tools/simulator/TcpCable.h"
#include "tools/simulator/posix/PrivateDirectory.h"
#include "tools/simulator/posix/PtyPort.h"

namespace simulator
{

std::unique_ptr<Cable> createCable(const Options &options, QString &error)
{
    if (options.listen) {
        return std::make_unique<TcpCable>(*options.listen);
    }
    if (options.link) {
        return std::make_unique<PtyPort>(*options.link);
    }
    const QString directory = privateDirectory(error);
    if (directory.isEmpty()) {
        return nullptr;
    }
    return std::make_unique<PtyPort>(directory + QStringLiteral("/veltrix-simulator"));
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

} // namespace simulator
