#include "app/CommandLine.h"

#include "app/Translations.h"
#include "app/frame/AppInfo.h"
#include "device/TcpAddress.h"
#include "engine/platform/PlatformFactory.h"
#include "engine/platform/Session.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <string_view>

namespace
{

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
    } else if (!parser.positionalArguments().isEmpty()) {
        result.request = Request::Mistake;
        result.message = tr("Unexpected argument: %1").arg(parser.positionalArguments().constFirst());
    }
    result.port = fromHere(parser.isSet(port) ? parser.value(port) : environmentPort);
    result.input = parser.value(input);
    if (result.request == Request::Run && !inputs.contains(result.input)) {
        result.request = Request::Mistake;
        result.message = tr("--input takes one of %1.").arg(inputs.join(QLatin1String(", ")));
    }
    result.verbose = parser.isSet(verbose);
    if (result.request == Request::Run && TcpAddress::isMeant(result.port) &&
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
    const bool asked = std::any_of(argv, argv + argc, [&](const char *argument) {
        return std::find(questions.begin(), questions.end(), argument) != questions.end();
    });
    if (!asked) {
        return std::nullopt;
    }
    const QCoreApplication application(argc, argv);
    Translations::install();
    return parse(QCoreApplication::arguments(), QString()).print();
}

int CommandLine::print() const
{
    const bool mistake = request == Request::Mistake;
    const QString text = mistake ? QStringLiteral("veltrix: %1\n").arg(message) : message;
    Session::print(text, mistake);
    return mistake ? 2 : 0;
}
