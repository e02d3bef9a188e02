#include "app/CommandLine.h"

#include "app/RemoteCommands.h"
#include "app/Translations.h"
#include "app/frame/AppInfo.h"
#include "device/TcpAddress.h"
#include "engine/platform/PlatformFactory.h"
#include "engine/platform/Session.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

namespace
{

/// A command's words as --help shows them and the parser takes them: the first is the option's own value,
/// those after it stand alone.
QCommandLineOption option(const Command &command)
{
    const QString values =
        QString::fromLatin1(command.values).replace(QLatin1Char(' '), QLatin1String("> <"));
    return QCommandLineOption(QLatin1String(command.option), Commands::describe(command), values);
}

int wordsOf(const Command &command)
{
    return QString::fromLatin1(command.values).split(QLatin1Char(' '), Qt::SkipEmptyParts).size();
}

/// The program leaves the folder in which the user typed a relative path. A bare name that is no file there
/// stays what it is: "COM3" is no path.
QString fromHere(const QString &port)
{
    if (TcpAddress::isMeant(port)) {
        return port;
    }
    const QFileInfo file(port);
    return !port.isEmpty() && (port.contains(QLatin1Char('/')) || file.exists()) ? file.absoluteFilePath()
                                                                                 : port;
}

} // namespace

QString CommandLine::takeCommand(const QCommandLineParser &parser)
{
    QStringList words = parser.positionalArguments();
    for (const Command &each : Commands::all()) {
        const QString name = QLatin1String(each.option);
        if (!parser.isSet(name)) {
            continue;
        }
        if (command != nullptr) {
            return tr("--%1 and --%2 do not go together.").arg(QLatin1String(command->option), name);
        }
        command = &each;
        request = Request::Command;
        const int wanted = wordsOf(each);
        if (wanted > 0) {
            words.prepend(parser.value(name));
        }
        if (words.size() < wanted) {
            return tr("A value is missing after --%1.").arg(name);
        }
        call.values = words.mid(0, wanted);
        words = words.mid(wanted);
    }
    call.json = parser.isSet(QStringLiteral("json"));
    if (call.json && (command == nullptr || !command->json)) {
        return tr("--json goes with --list and --status.");
    }
    if (command != nullptr && !command->desktop && !forStart.isEmpty()) {
        return tr("%1 and --%2 do not go together.")
            .arg(forStart.constFirst(), QLatin1String(command->option));
    }
    return words.isEmpty() ? QString() : tr("Unexpected argument: %1").arg(words.constFirst());
}

CommandLine CommandLine::parse(const QStringList &arguments, const QString &environmentPort)
{
    const QCommandLineOption port(QStringLiteral("port"),
                                  tr("Use this serial port as the device's for as long as it exists. "
                                     "tcp:127.0.0.1:PORT is a virtual device."),
                                  tr("path"));
    const QStringList inputs = PlatformFactory::choices();
    const QCommandLineOption input(
        QStringLiteral("input"),
        tr("How keys and pointer reach the desktop: %1.").arg(inputs.join(QLatin1String(", "))), tr("way"),
        inputs.constFirst());
    const QCommandLineOption verbose(QStringLiteral("verbose"), tr("Log every event."));
    // Not addHelpOption(), which would also promise --help-all: only the toolkit's own parsing answers that.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, tr("Show this help."));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        tr("Turns the buttons and the knob of the control surface into actions."));
    const QCommandLineOption version = parser.addVersionOption();
    // The instance guard looks at this one itself.
    QCommandLineOption secondary(QStringLiteral("secondary"));
    secondary.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({help, input, port, verbose, secondary});
    for (const Command &each : Commands::all()) {
        parser.addOption(option(each));
    }
    parser.addOption(QCommandLineOption(QStringLiteral("json"),
                                        tr("With --list and --status: answer with JSON, for programs.")));

    CommandLine result;
    if (!parser.parse(arguments)) {
        result.request = Request::Mistake;
        result.message = parser.errorText();
    } else if (parser.isSet(help)) {
        result.request = Request::Answer;
        result.message = parser.helpText();
    } else if (parser.isSet(version)) {
        result.request = Request::Answer;
        result.message = QStringLiteral("veltrix ") + QLatin1String(AppInfo::version) + QLatin1Char('\n');
    } else {
        for (const QCommandLineOption &each : {port, input}) {
            if (parser.isSet(each)) {
                result.forStart.append(QStringLiteral("--") + each.names().constFirst());
            }
        }
        result.message = result.takeCommand(parser);
        result.request = result.message.isEmpty() ? result.request : Request::Mistake;
    }
    result.port = fromHere(parser.isSet(port) ? parser.value(port) : environmentPort);
    result.input = parser.value(input);
    result.call.port = result.port;
    result.call.input = result.input;
    const bool looksAtTheDesktop =
        result.request == Request::Run || (result.request == Request::Command && result.command->desktop);
    if (looksAtTheDesktop && !inputs.contains(result.input)) {
        result.request = Request::Mistake;
        result.message = tr("--input takes one of %1.").arg(inputs.join(QLatin1String(", ")));
    }
    result.verbose = parser.isSet(verbose);
    if (looksAtTheDesktop && result.request != Request::Mistake && TcpAddress::isMeant(result.port) &&
        !TcpAddress::parse(result.port)) {
        result.request = Request::Mistake;
        result.message = tr("%1 is not on this computer: a virtual device is at tcp:127.0.0.1:PORT, with a "
                            "port from 1 to 65535.")
                             .arg(result.port);
    }
    return result;
}

std::optional<int> CommandLine::answerEarly(int argc, char **argv)
{
    using namespace std::string_view_literals;
    constexpr std::array questions{"-h"sv, "--help"sv, "-v"sv, "--version"sv};
    bool asked = false;
    bool desktop = false;
    std::for_each(argv, argv + argc, [&](const char *argument) {
        const QString option = QString::fromLocal8Bit(argument).section(QLatin1Char('='), 0, 0);
        const Command *found =
            option.startsWith(QLatin1String("--")) ? Commands::find(option.mid(2)) : nullptr;
        asked = asked || found != nullptr ||
                std::find(questions.begin(), questions.end(), argument) != questions.end();
        desktop = desktop || (found != nullptr && found->desktop);
    });
    if (!asked) {
        return std::nullopt;
    }
    std::unique_ptr<PlatformFactory> platforms;
    std::unique_ptr<QCoreApplication> application;
    if (desktop) {
        platforms = std::make_unique<PlatformFactory>();
        application = std::make_unique<QApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    AppInfo::introduce();
    Translations::install();
    QLoggingCategory::setFilterRules(QStringLiteral("veltrix.*.info=false")); // whoever asks gets the answer
    CommandLine line = parse(QCoreApplication::arguments(), qEnvironmentVariable("VELTRIX_PORT"));
    line.call.platforms = platforms.get();
    return line.request == Request::Run ? std::nullopt : std::optional(line.print());
}

int CommandLine::answerRefusedStart()
{
    Translations::install();
    const CommandLine line = parse(QCoreApplication::arguments(), QString());
    if (line.request != Request::Run) {
        return line.print();
    }
    if (!line.forStart.isEmpty()) {
        return Commands::answer(2, tr("Veltrix is running already and cannot take %1: quit it first.")
                                       .arg(line.forStart.join(QLatin1String(", "))));
    }
    return line.verbose ? RemoteCommands::verbose() : 0;
}

int CommandLine::print() const
{
    if (request == Request::Command) {
        return command->run(call);
    }
    const bool mistake = request == Request::Mistake;
    const QString text = mistake ? QStringLiteral("veltrix: %1\n").arg(message) : message;
    Session::print(text, mistake);
    return mistake ? 2 : 0;
}
