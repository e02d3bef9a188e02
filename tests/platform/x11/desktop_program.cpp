/// A program that does to the desktop what its arguments say, then waits for a signal: what the tests kill.
///
///   hold CODE...   presses keys (virtual-key codes) and the left button
///   hide           hides the pointer
///   idle           only starts everything
///   leave CODE...  presses keys and ends without letting them go
///
/// Prints "ready" when it has done so, and "quit" when it was asked to quit.
#include "engine/platform/PlatformFactory.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    const PlatformFactory platforms;
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString task = arguments.value(1);

    Platform platform = platforms.create();
    const std::unique_ptr<QObject> quitWatch = platform.watchQuitRequests([] {
        std::puts("quit");
        QCoreApplication::quit();
    });
    for (const QString &code : arguments.mid(2)) {
        platform.injector->sendKey(code.toUShort(), true);
    }
    if (task == QLatin1String("hold")) {
        platform.injector->sendLeftButton(true);
    }
    if (task == QLatin1String("hide")) {
        platform.appearance->setHidden(true);
    }
    platform.pointer->position(); // a round trip: all of it has happened
    std::puts("ready");
    std::fflush(stdout);
    if (task == QLatin1String("leave")) {
        std::_Exit(0);
    }
    const int status = QCoreApplication::exec();
    std::fflush(stdout);
    return status;
}
