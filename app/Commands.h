#pragma once

#include <QString>
#include <QStringList>

#include <vector>

class PlatformFactory;

/// What the command line has said of a command.
struct CommandCall {
    QStringList values; ///< one for each word of Command::values
    bool json = false;
    const PlatformFactory *platforms = nullptr; ///< for a command that needs the desktop
    QString port;                               ///< for such a command: as CommandLine has it
    QString input;
};

/// What the program can be asked to do instead of starting: it is done without a window, needs no display,
/// and the process ends.
struct Command {
    const char *option;      ///< without its hyphens
    const char *values;      ///< what belongs to it, in the order of the command line: "name file"; or ""
    const char *description; ///< for --help, in English
    bool json;               ///< --json goes with it
    int (*run)(const CommandCall &call); ///< prints, and returns the exit status. Has an application object.
    bool desktop = false; ///< it looks at the desktop, as far as there is one: the object is a QApplication,
                          ///< and --port and --input go with it
};

/// All commands. Each has its row here, and what it does in a file of its own.
namespace Commands
{

const std::vector<Command> &all();

/// Null for an option that is none of them.
const Command *find(const QString &option);

/// Its description in the user's language.
QString describe(const Command &command);

/// Prints @p text with a line end, if there is any: to standard output with status 0, else, as the
/// program's word, to standard error. Returns @p status.
int answer(int status, const QString &text);

} // namespace Commands
