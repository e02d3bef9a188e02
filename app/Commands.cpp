#include "app/Commands.h"

#include "app/Doctor.h"
#include "app/HistoryCommands.h"
#include "app/LicenceCommand.h"
#include "app/RemoteCommands.h"
#include "app/TravelCommands.h"
#include "engine/platform/Session.h"

#include <QCoreApplication>

#include <algorithm>

const std::vector<Command> &Commands::all()
{
    static const std::vector<Command> commands{
        // clang-format off
        {"use", "name", QT_TRANSLATE_NOOP("Commands", "Have the running program use the mapping of this name."), false, RemoteCommands::use},
        {"list", "", QT_TRANSLATE_NOOP("Commands", "List the running program's mappings."), true, RemoteCommands::list},
        {"show", "", QT_TRANSLATE_NOOP("Commands", "Show the running program's window."), false, RemoteCommands::show},
        {"status", "", QT_TRANSLATE_NOOP("Commands", "Tell the running program's device, mapping, layer and knob mode."), true, RemoteCommands::status},
        {"history", "", QT_TRANSLATE_NOOP("Commands", "List the earlier versions of your mapping files."), false, HistoryCommands::list},
        {"restore", "file", QT_TRANSLATE_NOOP("Commands", "Bring an earlier version of a mapping file back."), false, HistoryCommands::restore},
        {"import", "file", QT_TRANSLATE_NOOP("Commands", "Add the mappings of this file to your own."), false, TravelCommands::importFile},
        {"export", "name file", QT_TRANSLATE_NOOP("Commands", "Write the mapping of this name to a new file."), false, TravelCommands::exportMapping},
        {"doctor", "", QT_TRANSLATE_NOOP("Commands", "Tell what a request for support needs to know: device, input, paths, versions."), false, Doctor::run, true},
        {"licenses", "", QT_TRANSLATE_NOOP("Commands", "Print the licences of the program and of what it is built on."), false, LicenceCommand::run},
        // clang-format on
    };
    return commands;
}

const Command *Commands::find(const QString &option)
{
    const auto found = std::find_if(all().begin(), all().end(), [&option](const Command &command) {
        return option == QLatin1String(command.option);
    });
    return found == all().end() ? nullptr : &*found;
}

QString Commands::describe(const Command &command)
{
    return QCoreApplication::translate("Commands", command.description);
}

int Commands::answer(int status, const QString &text)
{
    if (!text.isEmpty()) {
        const QString line = text + QLatin1Char('\n');
        Session::print(status == 0 ? line : QStringLiteral("veltrix: ") + line, status != 0);
    }
    return status;
}
