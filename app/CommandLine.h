#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <optional>

/// What the user asked for on the command line.
struct CommandLine {
    Q_DECLARE_TR_FUNCTIONS(CommandLine)

public:
    enum class Request {
        Run,     ///< start the program
        Answer,  ///< print `message` to standard output and end with status 0
        Mistake, ///< print `message` to standard error and end with status 2
    };

    Request request = Request::Run;
    QString message;
    QString port;  ///< what counts as the device's port: an absolute path, or a port's name; empty: none
    QString input; ///< one of PlatformFactory::choices()
    bool verbose = false; ///< per-event lines in the log

    /// @p arguments as the application object has them, the program's name first. @p environmentPort is the
    /// port that the environment names; the option wins over it. A relative path is taken from the folder
    /// that is current now. Needs an application object.
    static CommandLine parse(const QStringList &arguments, const QString &environmentPort);

    /// Answers --help and --version before there is an application object, so that they need no display.
    /// Returns the exit status, or nothing when neither was asked for.
    static std::optional<int> answerEarly(int argc, char **argv);

    /// Prints `message` where `request` says, and returns the exit status that goes with it.
    int print() const;
};
