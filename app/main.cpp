#include "app/AfterCrash.h"
#include "app/AppLog.h"
#include "app/CommandLine.h"
#include "app/Core.h"
#include "app/DataDirectory.h"
#include "app/FileDrop.h"
#include "app/HidingNotice.h"
#include "app/Leftovers.h"
#include "app/Logging.h"
#include "app/RemoteControl.h"
#include "app/SettingsPlace.h"
#include "app/SingleApplication.h"
#include "app/Translations.h"
#include "app/UpdateDialog.h"
#include "app/ZRMainWindow.h"
#include "app/frame/AppInfo.h"
#include "device/DevicePorts.h"
#include "device/SerialProtocol.h"
#include "engine/ProgramSwitch.h"
#include "engine/platform/PlatformFactory.h"
#include "engine/platform/Session.h"
#include "mapping/MappingFile.h"
#include "mapping/MappingFiles.h"
#include "mapping/MappingSession.h"
#include "mapping/ProgramMappings.h"
#include "net/MapUpdate.h"
#include "net/ZRUpdater.h"
#include "remote/RemoteServer.h"
#include "ui/DeviceZR.h"

int main(int argc, char *argv[])
{
    Session::keepOthersFromWriting();
    if (const auto status = CommandLine::answerEarly(argc, argv)) {
        return *status;
    }
    const PlatformFactory platforms(AfterCrash::task());
    AfterCrash &afterCrash = AfterCrash::in(platforms.crashMemory());

    // Made before the names are set, so it finds nothing, and the window shows at every start. Deliberate.
    const QSettings settingsWithoutNames;
    AppInfo::introduce();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const char *scaling = Session::fitToScreens(ZRMainWindow::windowWidth, ZRMainWindow::windowHeight);
    const SingleApplication application(argc, argv, false, CommandLine::answerRefusedStart);
    if (scaling != nullptr) {
        qunsetenv(scaling);
    }
    Translations::install();

    const CommandLine commandLine =
        CommandLine::parse(QCoreApplication::arguments(), qEnvironmentVariable("VELTRIX_PORT"));
    if (commandLine.request != CommandLine::Request::Run) {
        return commandLine.print();
    }
    Logging::start(commandLine.verbose);
    if (!DevicePorts::includeSerialPorts()) {
        qCWarning(lcApp, "this build has no serial ports (VELTRIX_SERIAL_PORT=OFF): only a virtual device at "
                         "--port tcp:127.0.0.1:PORT is reached");
    }
    DevicePorts ports = DevicePorts::at(commandLine.port);
    const QString data = DataDirectory::path();
    const QString seeds = QCoreApplication::applicationDirPath();
    DataDirectory::prepare(data, seeds);
    Logging::addFile(data);
    if (!application.problem().isEmpty()) {
        qCWarning(lcApp).noquote() << application.problem();
    }
    const SettingsPlace settingsPlace{QLatin1String(AppInfo::organisationName),
                                      QLatin1String(AppInfo::applicationName)};
    const MappingFiles files(data, seeds);
    Leftovers::clearBesideSettings(settingsPlace.file());
    for (const QString &path :
         {files.library(), files.custom(), files.workingCopy(), files.programs(), settingsPlace.file()}) {
        MappingFile::removeUnfinished(path);
    }
    Platform platform = platforms.create(commandLine.input);
    // From here on a request to quit finds the event loop, now or as soon as it runs.
    const auto quitWatch = platform.watchQuitRequests([] { QCoreApplication::quit(); });

    const bool show = Settings::isOlder(settingsWithoutNames, QLatin1String(AppInfo::version));

    Core core(platform, afterCrash.messages);
    MappingSession mappings(files);
    core.dispatcher().follow(mappings);
    ProgramMappings programMappings(mappings);
    ProgramSwitch programSwitch(*platform.focusedProgram, core.dispatcher(), programMappings);
    MapUpdate mapUpdate(mappings.files().library(), &core.settings());
    UpdateDialog updateDialog;
    ZRUpdater *updater = ZRUpdater::instance();
    ZRUpdater::Setup updates;
    updates.version = QLatin1String(AppInfo::version);
    updates.prompt = &updateDialog;
    updater->configure(updates);

    ZRMainWindow window(
        std::make_unique<SerialProtocol>(std::move(ports.finder), std::move(ports.create)),
        [&](QWidget *parent, SerialProtocol *serial, ZRUpdater *pageUpdater) {
            return new DeviceZR(parent, serial,
                                {&mappings, &core.dispatcher(), &core.settings(), &core.knobSettings(),
                                 &core.launchOnStartup(), &mapUpdate, pageUpdater, platform.desktop.get(),
                                 core.midiPortName(), platform.notice, &programMappings, &programSwitch});
        },
        updater, core.clock());
    updateDialog.setWindow(&window);
    const auto bringWindow = [&window] {
        window.showOnFront();
        Session::bringToFront(window.winId());
    };
    QObject::connect(&application, &SingleApplication::showUp, &window, bringWindow);
    const RemoteControl control(
        {&mappings, &core.dispatcher(), [&window] { return window.isConnected(); }, bringWindow});
    RemoteServer remote([&control](const RemoteRequest &request) { return control.answer(request); });
    remote.listen(Session::userMark());
    QObject::connect(&window, &ZRMainWindow::hiddenWithoutTray, &window,
                     [&] { HidingNotice::giveOnce(core.settings(), platform.notify); });
    const FileDrop fileDrop(
        window, [&window](const QStringList &dropped) { window.devicePage()->importFiles(dropped); });
    if (show) {
        window.show();
    }
    // Reading the library takes a good part of the start, and the window does not need it.
    window.devicePage()->load();
    QObject::connect(&application, &QCoreApplication::aboutToQuit, updater, &ZRUpdater::aboutToQuit);
    QObject::connect(updater, &ZRUpdater::onDownloadComplete, updater, &ZRUpdater::install);
    const auto mouseListener = platform.watchMouse([&] { window.devicePage()->onUserMovingMouse(); });

    const auto refusedInput = platform.watchRefusedInput([&] { window.devicePage()->showRefusedInput(); });

    const int status = SingleApplication::exec();
    Logging::closeFile();
    return status;
}
