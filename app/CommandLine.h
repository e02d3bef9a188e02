#pragma once

#include "app/Commands.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <optional>

class QCommandLineParser;

/// What the user asked for on the command line.
struct CommandLine {
    Q_DECLARE_TR_FUNCTIONS(CommandLine)

public:
    enum class Request {
        Run,     ///< start the program
        Command, ///< carry out `command` with `call`, and end with its status
        Answer,  ///< print `message` to standard output and end with status 0
        Mistake, ///< print `message` to standard error and end with status 2
    };

    Request request = Request::Run;
    QString message;
    QString port;  ///< what counts as the device's port: an absolute path, or a port's name; empty: none
    QString input; ///< one of PlatformFactory::choices()
    bool verbose = false; ///< per-event lines in the log
    QStringList forStart; ///< of the given options those that only a start can take, as "--port"
    const Command *command = nullptr;
    CommandCall call;

    /// @p arguments as the application object has them, the program's name first. @p environmentPort is the
    /// port that the environment names; the option wins over it. A relative path is taken from the folder
    /// that is current now. Needs an application object.
    static CommandLine parse(const QStringList &arguments, const QString &environmentPort);

    /// Answers --help and --version and carries out commands before there is an application object, so that
    /// they need no display. Returns the exit status, or nothing when none was asked for.
    static std::optional<int> answerEarly(int argc, char **argv);

    /// For a start beside a running copy, which has been woken: hands on what that can take, says what it
    /// cannot, and returns the exit status. Needs an application object.
    static int answerRefusedStart();

    /// Prints `message` where `request` says, and returns the exit status that goes with it; for a command,
    /// carries it out.
    int print() const;

private:
    QString takeCommand(const QCommandLineParser &parser);
};
