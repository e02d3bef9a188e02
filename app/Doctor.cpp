#include "app/Doctor.h"

#include "app/DataDirectory.h"
#include "app/FindingText.h"
#include "app/frame/AppInfo.h"
#include "app/frame/UserGuide.h"
#include "device/DevicePorts.h"
#include "device/SerialProtocol.h"
#include "device/SystemPorts.h"
#include "device/TcpAddress.h"
#include "engine/platform/PlatformFactory.h"
#include "engine/platform/Session.h"
#include "midi/MidiOutPort.h"
#include "remote/RemoteClient.h"

#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QScreen>
#include <QSettings>
#include <QSysInfo>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QUrl>

namespace
{

constexpr int logLines = 20;
constexpr qint64 logBytes = qint64{16} * 1024;
constexpr int patience = 2000;     // ms, for the running copy
constexpr int tcpConnection = 300; // ms, on this computer

// By the platform, while it was made. Empty it takes nothing at the start of the program.
QStringList said; // clazy:exclude=non-pod-global-static

void listen(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type != QtDebugMsg && qstrncmp(context.category, "veltrix.platform", 16) == 0) {
        said.append(text);
    }
}

QString lastPart(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    file.seek(qMax<qint64>(0, file.size() - logBytes));
    return QString::fromUtf8(file.readAll());
}

/// A heading and its lines, as they are printed.
QString section(const QString &title, const QStringList &lines)
{
    return QLatin1Char('\n') + title + QStringLiteral("\n  ") + lines.join(QStringLiteral("\n  ")) +
           QLatin1Char('\n');
}

DeviceFinding look(const QString &port)
{
    DevicePorts ports = DevicePorts::at(port);
    SerialProtocol link(std::move(ports.finder), std::move(ports.create));
    link.scannSerial();
    if (TcpAddress::isMeant(port)) { // the first look has begun to connect
        QEventLoop connecting;
        QTimer::singleShot(tcpConnection, &connecting, &QEventLoop::quit);
        connecting.exec();
        link.scannSerial();
    }
    return link.finding();
}

} // namespace

QStringList Doctor::withoutSecrets(const QStringList &log)
{
    static const QRegularExpression shape(
        QStringLiteral("^\\d{4}-\\d\\d-\\d\\d [\\d:.]+ (info|warning|error|fatal) veltrix\\.(\\w+): "));
    // Where names of mappings stand.
    static const QRegularExpression named(QStringLiteral("(?<=[:\"]).*|(?<=The mapping ).*(?= was)"));
    QStringList result;
    for (const QString &line : log) {
        const QRegularExpressionMatch match = shape.match(line);
        if (!match.hasMatch()) {
            continue; // about a single event, or the rest of such a line
        }
        const QString category = match.captured(2);
        const QString start = match.captured(0);
        QString text = line.mid(start.size());
        if (category == QLatin1String("ui") || category == QLatin1String("mapping") ||
            category == QLatin1String("remote")) {
            text.replace(named, QStringLiteral("…"));
        }
        result.append(start + text);
    }
    return result;
}

QStringList Doctor::runningCopy(const RemoteAnswer &status)
{
    if (status.status != 0) {
        return status.text.split(QLatin1Char('\n'));
    }
    QJsonObject state = QJsonDocument::fromJson(status.text.toUtf8()).object();
    state.remove(QStringLiteral("mapping"));
    QStringList lines;
    for (auto each = state.constBegin(); each != state.constEnd(); ++each) {
        lines << each.key() + QStringLiteral(": ") + each.value().toVariant().toString();
    }
    return lines;
}

QStringList Doctor::device(const DeviceFinding &finding, bool isRunning)
{
    QStringList lines;
    if (isRunning && finding.kind == DeviceFinding::Kind::Held &&
        finding.holder.program == QLatin1String("veltrix")) {
        lines << tr("%1 is there, and the running Veltrix uses it").arg(finding.port);
    } else {
        lines << FindingText::sentence(finding);
    }
    const QVector<PortDescription> ports = systemports::createLister()->availablePorts();
    for (const PortDescription &port : ports) {
        if (port.isOfDevice()) {
            lines << QStringLiteral("%1: %2, %3, %4")
                         .arg(port.systemLocation, port.description, port.serialNumber,
                              QStringLiteral("%1").arg(port.productIdentifier, 4, 16, QLatin1Char('0')));
        }
    }
    return lines;
}

QStringList Doctor::session()
{
    QStringList lines;
    const bool isShown = QGuiApplication::platformName() != QLatin1String("offscreen");
    if (!isShown) {
        lines << tr("No display answers: there is no desktop, and no window can be shown");
    }
    for (const char *name : {"XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP", "WAYLAND_DISPLAY", "DISPLAY"}) {
        const QString value = qEnvironmentVariable(name);
        lines << QStringLiteral("%1=%2").arg(QLatin1String(name), value);
    }
    lines << QStringLiteral("Qt: ") + QGuiApplication::platformName();
    const QList<QScreen *> screens = isShown ? QGuiApplication::screens() : QList<QScreen *>();
    for (const QScreen *screen : screens) {
        const QRect place = screen->geometry();
        lines << screen->name() + QStringLiteral(": %1 x %2 + %3 + %4, %5 %")
                                      .arg(place.width())
                                      .arg(place.height())
                                      .arg(place.x())
                                      .arg(place.y())
                                      .arg(screen->devicePixelRatio() * 100);
    }
    return lines;
}

QStringList Doctor::input(const PlatformFactory &platforms, const QString &choice)
{
    const Platform platform = platforms.create(choice);
    return platform.notice.isEmpty() ? said : said + QStringList(platform.notice);
}

QStringList Doctor::paths()
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString data = DataDirectory::path();
    return {
        tr("Program: %1").arg(QCoreApplication::applicationFilePath()),
        tr("Mappings: %1").arg(data),
        tr("Settings: %1")
            .arg(QSettings(QLatin1String(AppInfo::organisationName), QLatin1String(AppInfo::applicationName))
                     .fileName()),
        tr("Log: %1").arg(data + QStringLiteral("/veltrix.log")),
        tr("User guide: %1").arg(UserGuide::address(program).toDisplayString(QUrl::PreferLocalFile)),
    };
}

QStringList Doctor::versions()
{
    return {
        QStringLiteral("Veltrix ") + QLatin1String(AppInfo::version),
        QStringLiteral("Qt ") + QString::fromLatin1(qVersion()),
        QSysInfo::prettyProductName(),
        QStringLiteral("%1 %2, %3")
            .arg(QSysInfo::kernelType(), QSysInfo::kernelVersion(), QSysInfo::currentCpuArchitecture()),
    };
}

int Doctor::run(const CommandCall &call)
{
    qInstallMessageHandler(listen);
    QLoggingCategory::setFilterRules(QString()); // commands keep such lines to themselves
    // The running copy first: the port is its own, if there is one.
    const RemoteAnswer running =
        RemoteClient::ask({QStringLiteral("status"), {}, true}, Session::userMark(), patience);
    const QStringList midi = MidiOutPort().portNames();
    const QStringList log = withoutSecrets(
        lastPart(DataDirectory::path() + QStringLiteral("/veltrix.log")).split(QLatin1Char('\n')));
    const QString none = tr("none");
    const QString report =
        section(tr("Device"), device(look(call.port), running.status == 0)) +
        section(tr("Running copy"), runningCopy(running)) + section(tr("Session"), session()) +
        section(tr("Input"), input(*call.platforms, call.input)) +
        section(tr("MIDI outputs"), midi.isEmpty() ? QStringList(none) : midi) +
        section(
            tr("Tray"),
            {QSystemTrayIcon::isSystemTrayAvailable()
                 ? tr("there is one")
                 : tr("This desktop has none: start the program once more to bring a hidden window back")}) +
        section(tr("Paths"), paths()) + section(tr("Versions"), versions()) +
        section(tr("Last lines of the log"),
                log.isEmpty() ? QStringList(none) : log.mid(log.size() - logLines));
    Session::print(report.mid(1), false);
    return 0;
}
