// What a program with a signing key makes of a service: fetches the library and the installer and says how
// that ended. Usage: service_client SERVICE KEY DIRECTORY

#include "net/MapUpdate.h"
#include "net/ZRUpdater.h"

#include <QCoreApplication>
#include <QSettings>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        return 2;
    }
    const QString directory = arguments.at(3);
    int running = 2;
    const auto end = [&running](const char *what, const char *how) {
        std::printf("%s: %s\n", what, how);
        if (--running == 0) {
            QCoreApplication::quit();
        }
    };

    QSettings settings(directory + QStringLiteral("/settings.ini"), QSettings::IniFormat);
    MapUpdate library(directory + QStringLiteral("/ZR.xml"), &settings, arguments.at(1),
                      arguments.at(2).toLatin1());
    QObject::connect(&library, &MapUpdate::dowloadFinished,
                     [&end](bool success) { end("library", success ? "fetched" : "refused"); });
    library.check();

    ZRUpdater::Setup setup;
    setup.version = QStringLiteral("1.10");
    setup.serviceUrl = arguments.at(1);
    setup.installerFile = directory + QStringLiteral("/update/installer");
    setup.signingKey = arguments.at(2).toLatin1();
    ZRUpdater updater(setup);
    QObject::connect(&updater, &ZRUpdater::onUpdateAvailable, &updater, &ZRUpdater::onUpdateAllowed);
    QObject::connect(&updater, &ZRUpdater::onDownloadComplete, [&end] { end("installer", "fetched"); });
    QObject::connect(&updater, &ZRUpdater::onDownloadInterrupted, [&end] { end("installer", "refused"); });
    updater.arm();
    return QCoreApplication::exec();
}
