#include "tools/simulator/Cable.h"
#include "tools/simulator/DeviceWindow.h"
#include "tools/simulator/Options.h"
#include "tools/simulator/Output.h"
#include "tools/simulator/SignalWatcher.h"
#include "tools/simulator/Simulation.h"
#include "tools/simulator/VirtualDevice.h"

#include <QApplication>
#include <QLocale>
#include <QTranslator>

#include <chrono>
#include <memory>

namespace
{

using simulator::print;

int fail(int status, const QString &message)
{
    print(QStringLiteral("veltrix-simulator: %1\n").arg(message), true);
    return status;
}

bool wantsWindow(const simulator::Options &options)
{
    return options.window && options.error.isEmpty() && !options.help && !options.version;
}

std::unique_ptr<QCoreApplication> createApplication(bool window, int &argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("veltrix-simulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELTRIX_VERSION));
    if (!window) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    return std::make_unique<QApplication>(argc, argv);
}

void printReports(simulator::VirtualDevice &device)
{
    QObject::connect(&device, &simulator::VirtualDevice::reported, &device, [](const QByteArray &message) {
        const auto time = std::chrono::steady_clock::now().time_since_epoch();
        const qint64 nanoseconds = std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
        const QString report = QString::fromLatin1(message).simplified();
        print(QStringLiteral("sent %1 %2\n").arg(nanoseconds).arg(report));
    });
}

} // namespace

int main(int argc, char **argv)
{
    QTranslator texts;
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    const bool window = wantsWindow(simulator::parseOptions(arguments));
    if (window && !simulator::hasDisplay()) {
        return fail(1, QStringLiteral("no display for the window; see --script and --stdin in --help"));
    }
    const auto application = createApplication(window, argc, argv);
    if (texts.load(QLocale(), QStringLiteral("veltrix"), QStringLiteral("_"),
                   QStringLiteral(":/translations"))) {
        QCoreApplication::installTranslator(&texts);
    }
    // Once more: now a mistake is told in the user's language, and Windows' file names are whole.
    const simulator::Options options = simulator::parseOptions(QCoreApplication::arguments());
    if (options.help) {
        print(simulator::helpText());
        return 0;
    }
    if (options.version) {
        print(QStringLiteral("veltrix-simulator " VELTRIX_VERSION "\n"));
        return 0;
    }
    if (!options.error.isEmpty()) {
        return fail(2, options.error);
    }

    QString error;
    const auto cable = simulator::createCable(options, error);
    if (!cable) {
        return fail(1, error);
    }
    simulator::VirtualDevice device(*cable);
    simulator::Simulation simulation(options, device);
    if (const int status = simulation.load(); status != 0) {
        return status;
    }
    if (!cable->claim()) {
        return fail(1, cable->errorString());
    }

    simulator::SignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, &simulator::SignalWatcher::raised, application.get(), [](int number) {
        constexpr int endedBySignal = 128;
        QCoreApplication::exit(endedBySignal + number);
    });
    QObject::connect(&simulation, &simulator::Simulation::finished, application.get(),
                     [](int status) { QCoreApplication::exit(status); });
    QObject::connect(cable.get(), &simulator::Cable::openedChanged, &device, [&device](bool opened) {
        print(opened ? QStringLiteral("opened\n") : QStringLiteral("closed\n"));
        device.portStateChanged();
    });
    QObject::connect(cable.get(), &simulator::Cable::overrun, &device,
                     [] { print(QStringLiteral("the program does not read: reports are lost\n"), true); });
    QObject::connect(cable.get(), &simulator::Cable::overrunEnded, &device, [](int count) {
        print(QStringLiteral("the program reads again: %1 bytes were lost\n").arg(count), true);
    });
    QObject::connect(cable.get(), &simulator::Cable::pluggedChanged, &device, [&cable](bool plugged) {
        print(plugged ? QStringLiteral("plugged %1\n").arg(cable->address()) : QStringLiteral("unplugged\n"));
    });
    if (options.timestamps) {
        printReports(device);
    }

    if (!options.unplugged && !device.setPlugged(true)) {
        return fail(1, cable->errorString());
    }
    std::unique_ptr<simulator::DeviceWindow> deviceWindow;
    if (window) {
        deviceWindow = std::make_unique<simulator::DeviceWindow>(device, cable->address());
        deviceWindow->show();
    }
    simulation.start();
    return QCoreApplication::exec();
}
