#include "app/FindingText.h"

#include "device/DeviceSearch.h"

using Kind = DeviceFinding::Kind;

QString FindingText::sentence(const DeviceFinding &finding)
{
    switch (finding.kind) {
    case Kind::NotLooked:
        break;
    case Kind::Nothing:
        return tr("No device is plugged in. The panel opens by itself as soon as the device is found.");
    case Kind::NamedMissing:
        return tr("%1, which was named as the device's port, is not there").arg(finding.port);
    case Kind::Other:
        return finding.detail.isEmpty()
                   ? tr("%1 is there, but it is not the control surface").arg(finding.port)
                   : tr("%1 (%2) is there, but it is not the control surface")
                         .arg(finding.port, finding.detail);
    case Kind::Forbidden:
        return tr("%1 is there, but this user may not open it: install the package's rule or join the group "
                  "%2")
            .arg(finding.port, finding.detail.isEmpty() ? QStringLiteral("dialout") : finding.detail);
    case Kind::Held:
        return finding.holder.program.isEmpty()
                   ? tr("%1 is there, but another program holds it: close that program").arg(finding.port)
                   : tr("%1 is there, but %2 holds it: close that program")
                         .arg(finding.port, finding.holder.program);
    case Kind::Refused:
        return tr("%1 is there, but cannot be opened: %2").arg(finding.port, finding.detail);
    case Kind::Vanishing:
        return tr("The device comes and goes: try another cable, or another socket without a hub");
    case Kind::Open:
        return tr("The device is there: %1").arg(finding.port);
    }
    return {};
}

bool FindingText::isProblem(const DeviceFinding &finding)
{
    return finding.kind != Kind::NotLooked && finding.kind != Kind::Nothing && finding.kind != Kind::Open;
}

QString FindingText::section(const DeviceFinding &finding)
{
    switch (finding.kind) {
    case Kind::Forbidden:
        return QStringLiteral("linux-you-may-not-use-the-port");
    case Kind::Held:
        return QStringLiteral("another-program-holds-the-port");
    case Kind::Vanishing:
        return QStringLiteral("the-device-comes-and-goes");
    case Kind::Other:
    case Kind::NamedMissing:
    case Kind::Refused:
        return QStringLiteral("neither-of-these");
    case Kind::NotLooked:
    case Kind::Nothing:
    case Kind::Open:
        break;
    }
    return QStringLiteral("the-device-is-not-found");
}
