#include "tools/simulator/Options.h"

#include <QCommandLineParser>

namespace simulator
{

namespace
{

struct Definition {
    const char *name;
    const char *help;
    const char *value;
};

constexpr Definition definitions[] = {
    {"script", QT_TRANSLATE_NOOP("Options", "Play the script in FILE, then end. No window."), "FILE"},
    {"stdin", QT_TRANSLATE_NOOP("Options", "Play lines from standard input until it ends. No window."),
     nullptr},
    {"window", QT_TRANSLATE_NOOP("Options", "Show the window also with --script or --stdin."), nullptr},
    {"stay",
     QT_TRANSLATE_NOOP("Options", "Stay plugged in after the end of the script or of standard input."),
     nullptr},
    {"unplugged", QT_TRANSLATE_NOOP("Options", "Start with the cable out."), nullptr},
    {"link",
     QT_TRANSLATE_NOOP("Options",
                       "Publish the device as PATH instead of $XDG_RUNTIME_DIR/veltrix-simulator."),
     "PATH"},
    {"listen",
     QT_TRANSLATE_NOOP("Options",
                       "Be at tcp:127.0.0.1:PORT instead, for programs on this computer (0: any free port)."),
     "PORT"},
    {"timestamps",
     QT_TRANSLATE_NOOP("Options", "Print \"sent NANOSECONDS REPORT\" (steady clock) for each report."),
     nullptr},
};

QString text(const char *source)
{
    return QCoreApplication::translate("Options", source); // marked for the translators where it stands
}

} // namespace

Options parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const Definition &definition : definitions) {
        const QString name = QLatin1String(definition.name);
        const QString value = definition.value == nullptr ? QString() : QLatin1String(definition.value);
        parser.addOption(QCommandLineOption(name, QString(), value));
    }
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), QStringLiteral("help")}));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("v"), QStringLiteral("version")}));

    Options options;
    if (!parser.parse(arguments)) {
        options.error = parser.errorText();
    } else if (!parser.positionalArguments().isEmpty()) {
        options.error = text(QT_TRANSLATE_NOOP("Options", "unexpected argument \"%1\""))
                            .arg(parser.positionalArguments().constFirst());
    }
    const auto isSet = [&parser](const char *name) { return parser.isSet(QLatin1String(name)); };
    options.help = isSet("help");
    options.version = isSet("version");
    options.readInput = isSet("stdin");
    options.stay = isSet("stay");
    options.unplugged = isSet("unplugged");
    options.timestamps = isSet("timestamps");
    if (isSet("script")) {
        options.scriptFile = parser.value(QStringLiteral("script"));
    }
    if (isSet("link")) {
        options.link = parser.value(QStringLiteral("link"));
    }
    if (isSet("listen")) {
        bool ok = false;
        options.listen = parser.value(QStringLiteral("listen")).toUShort(&ok);
        if (!ok) {
            options.error = text(QT_TRANSLATE_NOOP("Options", "--listen needs a port from 0 to 65535"));
        } else if (options.link) {
            options.error = text(QT_TRANSLATE_NOOP("Options", "--link and --listen exclude each other"));
        }
    }
    if (options.link && options.link->isEmpty()) {
        options.error = text(QT_TRANSLATE_NOOP("Options", "--link needs a path"));
    }
    options.window = isSet("window") || (!options.scriptFile && !options.readInput);
    return options;
}

QString helpText()
{
    QString help = text(QT_TRANSLATE_NOOP(
        "Options",
        "Usage: veltrix-simulator [options]\n"
        "\n"
        "A virtual control surface: ten buttons and a touch knob at a pseudo-terminal or a local TCP port.\n"
        "Start the program with --port and what is printed here, then use the device in the window.\n"
        "\n"
        "Options:\n"));
    for (const Definition &definition : definitions) {
        QString option = QStringLiteral("--") + QLatin1String(definition.name);
        if (definition.value != nullptr) {
            option += QLatin1Char(' ') + QLatin1String(definition.value);
        }
        help += QStringLiteral("  %1 %2\n").arg(option, -15).arg(text(definition.help));
    }
    help += QStringLiteral("  %1 %2\n")
                .arg(QStringLiteral("-h, --help"), -15)
                .arg(text(QT_TRANSLATE_NOOP("Options", "Show this help.")));
    help += QStringLiteral("  %1 %2\n")
                .arg(QStringLiteral("-v, --version"), -15)
                .arg(text(QT_TRANSLATE_NOOP("Options", "Show the version.")));
    help += text(QT_TRANSLATE_NOOP(
        "Options",
        "\n"
        "Scripts and standard input have one event a line:\n"
        "  BP3, BR3             button 3 down, up (0 to 9)\n"
        "  KND, KNU, KNL, KNR   knob touched, let go, one step left, right\n"
        "  12, -3               a count\n"
        "  wait MS              do nothing for so many milliseconds\n"
        "  plug, unplug         put the cable in, pull it out\n"
        "  raw HEX              send these bytes\n"
        "  # ...                a comment\n"
        "The first report waits up to 3 s for a program to open the port. What happens to the port is\n"
        "printed as \"plugged PORT\", \"opened\", \"closed\" and \"unplugged\".\n"
        "\n"
        "Status: 0 done, 1 the port cannot be made, 2 a mistake in the command line, the script or the\n"
        "input (in a terminal, a mistake in the input is only reported), 128 + N ended by signal N.\n"));
    return help;
}

} // namespace simulator
