// A program under the instance guard. Says what it is, then what happens; ends when its standard input does.
#include "app/SingleApplication.h"
#include "app/frame/AppInfo.h"

#include <QSocketNotifier>

#include <cstdio>
#include <unistd.h>

namespace
{

void say(const char *line)
{
    std::puts(line);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setApplicationName(QLatin1String(AppInfo::applicationName));
    QCoreApplication::setOrganizationName(QLatin1String(AppInfo::organisationName));
    const SingleApplication application(argc, argv, qEnvironmentVariableIsSet("ALLOW_SECONDARY"));
    QObject::connect(&application, &SingleApplication::showUp, &application, [] { say("showUp"); });
    say(application.isPrimary() ? "primary" : "secondary");
    if (!application.problem().isEmpty()) {
        say(qPrintable(QStringLiteral("problem: ") + application.problem()));
    }

    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [] {
        char buffer[16];
        if (read(STDIN_FILENO, buffer, sizeof buffer) <= 0) {
            QCoreApplication::quit();
        }
    });
    return SingleApplication::exec();
}
