#include "app/CommandLine.h"
#include "engine/platform/PlatformFactory.h"
#include "tests/support/main/Main.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutOptionsTheProgramRuns();
    void theOptionWinsOverTheEnvironment();
    void aRelativePortIsTakenFromTheCurrentFolder();
    void aPortThatIsNoPathStaysAName();
    void aVirtualDeviceIsTakenOnThisComputerOnly();
    void inputIsOneOfTheWaysThatWereBuilt();
    void verboseIsOffUnlessAsked();
    void helpAndVersionAreAnswered();
    void anUnknownOptionIsAMistake();
    void aStrayArgumentIsAMistake();
    void earlyAnswerOnlyWhenAsked();
    void aCommandComesWithItsValues();
    void jsonGoesWithWhatAnswers();
    void commandsGoWithNothingElse();
    void aCommandThatLacksAValueIsAMistake();
    void whatOnlyAStartTakesIsNoted();

private:
    static CommandLine parse(const QStringList &options)
    {
        return CommandLine::parse(QStringList(QStringLiteral("veltrix")) + options, QString());
    }
};

void tst_CommandLine::withoutOptionsTheProgramRuns()
{
    const CommandLine line = CommandLine::parse({QStringLiteral("veltrix")}, QStringLiteral("/dev/ttyX"));
    QCOMPARE(line.request, CommandLine::Request::Run);
    QCOMPARE(line.port, QFileInfo(QStringLiteral("/dev/ttyX")).absoluteFilePath());
}

void tst_CommandLine::theOptionWinsOverTheEnvironment()
{
    const CommandLine line =
        CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--port"), QStringLiteral("/dev/ttyA")},
                           QStringLiteral("/dev/ttyB"));
    QCOMPARE(line.port, QFileInfo(QStringLiteral("/dev/ttyA")).absoluteFilePath());
}

void tst_CommandLine::aRelativePortIsTakenFromTheCurrentFolder()
{
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    const QString here = QDir::currentPath();
    QFile file(QStringLiteral("device"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const auto portOf = [](const char *port) {
        return CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--port"), QLatin1String(port)},
                                  QString())
            .port;
    };
    const QString there = portOf("device");
    const QString notYet = portOf("sub/device");
    const QString environments =
        CommandLine::parse({QStringLiteral("veltrix")}, QStringLiteral("./device")).port;
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(there, here + QStringLiteral("/device"));
    QCOMPARE(notYet, here + QStringLiteral("/sub/device"));
    QCOMPARE(QDir::cleanPath(environments), here + QStringLiteral("/device"));
}

void tst_CommandLine::aPortThatIsNoPathStaysAName()
{
    QCOMPARE(CommandLine::parse({QStringLiteral("veltrix")}, QStringLiteral("COM3")).port,
             QStringLiteral("COM3"));
    QCOMPARE(CommandLine::parse({QStringLiteral("veltrix")}, QString()).port, QString());
}

void tst_CommandLine::aVirtualDeviceIsTakenOnThisComputerOnly()
{
    const auto parse = [](const char *port) {
        return CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--port"), QLatin1String(port)},
                                  QString());
    };
    QCOMPARE(parse("tcp:127.0.0.1:5000").request, CommandLine::Request::Run);
    QCOMPARE(parse("tcp:127.0.0.1:5000").port, QStringLiteral("tcp:127.0.0.1:5000"));
    for (const char *port : {"tcp:192.168.0.7:5000", "tcp:device/x:5000", "tcp:127.0.0.1:0"}) {
        const CommandLine line = parse(port);
        QCOMPARE(line.request, CommandLine::Request::Mistake);
        QVERIFY2(line.message.startsWith(QLatin1String(port)), qPrintable(line.message));
        QVERIFY2(line.message.contains(QLatin1String("127.0.0.1")), qPrintable(line.message));
    }
    const CommandLine environments =
        CommandLine::parse({QStringLiteral("veltrix")}, QStringLiteral("tcp:192.168.0.7:5000"));
    QCOMPARE(environments.request, CommandLine::Request::Mistake);
    const QStringList doctor{QStringLiteral("veltrix"), QStringLiteral("--doctor")};
    QCOMPARE(CommandLine::parse(doctor, QStringLiteral("tcp:127.0.0.1:5000")).request,
             CommandLine::Request::Command);
    QCOMPARE(CommandLine::parse(doctor, QStringLiteral("tcp:192.168.0.7:5000")).request,
             CommandLine::Request::Mistake);
    // Commands that look at no device work in such an environment too.
    QCOMPARE(CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--list")},
                                QStringLiteral("tcp:192.168.0.7:5000"))
                 .request,
             CommandLine::Request::Command);
}

void tst_CommandLine::inputIsOneOfTheWaysThatWereBuilt()
{
    const auto parse = [](const QString &option) {
        return CommandLine::parse({QStringLiteral("veltrix"), option}, QString());
    };
    QCOMPARE(CommandLine::parse({QStringLiteral("veltrix")}, QString()).input, QStringLiteral("auto"));
    const QStringList ways = PlatformFactory::choices();
    QVERIFY(ways.size() > 1);
    for (const QString &way : ways) {
        const CommandLine line = parse(QStringLiteral("--input=") + way);
        QCOMPARE(line.request, CommandLine::Request::Run);
        QCOMPARE(line.input, way);
        QVERIFY(parse(QStringLiteral("--help")).message.contains(way));
    }
    const CommandLine mistake = parse(QStringLiteral("--input=telepathy"));
    QCOMPARE(mistake.request, CommandLine::Request::Mistake);
    QCOMPARE(mistake.message, QStringLiteral("--input takes one of %1.").arg(ways.join(QLatin1String(", "))));
    const CommandLine doctors = CommandLine::parse(
        {QStringLiteral("veltrix"), QStringLiteral("--doctor"), QStringLiteral("--input=telepathy")},
        QString());
    QCOMPARE(doctors.request, CommandLine::Request::Mistake);
    QCOMPARE(doctors.message, mistake.message);
}

void tst_CommandLine::verboseIsOffUnlessAsked()
{
    QVERIFY(!CommandLine::parse({QStringLiteral("veltrix")}, QString()).verbose);
    QVERIFY(CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--verbose")}, QString()).verbose);
}

void tst_CommandLine::helpAndVersionAreAnswered()
{
    const CommandLine help =
        CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--help")}, QString());
    QCOMPARE(help.request, CommandLine::Request::Answer);
    QVERIFY(help.message.contains(QLatin1String("--port")));
    // Whatever it lists is understood.
    QRegularExpressionMatchIterator option =
        QRegularExpression(QStringLiteral("--[a-z-]+")).globalMatch(help.message);
    while (option.hasNext()) {
        const QString name = option.next().captured();
        const CommandLine line = CommandLine::parse({QStringLiteral("veltrix"), name}, QString());
        QVERIFY2(name == QLatin1String("--port") || name == QLatin1String("--input") ||
                     name == QLatin1String("--verbose") || line.request == CommandLine::Request::Answer ||
                     name == QLatin1String("--json") || Commands::find(name.mid(2)) != nullptr,
                 qPrintable(name));
    }
    const CommandLine version =
        CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--version")}, QString());
    QCOMPARE(version.message, QStringLiteral("veltrix 1.10\n"));
    QCOMPARE(version.print(), 0);
}

void tst_CommandLine::anUnknownOptionIsAMistake()
{
    const CommandLine line =
        CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("--nonsense")}, QString());
    QCOMPARE(line.request, CommandLine::Request::Mistake);
    QVERIFY(line.message.contains(QLatin1String("nonsense")));
    QCOMPARE(line.print(), 2);
}

void tst_CommandLine::aStrayArgumentIsAMistake()
{
    const CommandLine line =
        CommandLine::parse({QStringLiteral("veltrix"), QStringLiteral("file.xml")}, QString());
    QCOMPARE(line.request, CommandLine::Request::Mistake);
    QVERIFY(line.message.contains(QLatin1String("file.xml")));
}

void tst_CommandLine::earlyAnswerOnlyWhenAsked()
{
    QByteArray name("veltrix");
    QByteArray option("--verbose");
    std::array<char *, 3> arguments{name.data(), option.data(), nullptr};
    QVERIFY(!CommandLine::answerEarly(2, arguments.data()).has_value());
}

void tst_CommandLine::aCommandComesWithItsValues()
{
    for (const QStringList &options : {QStringList{QStringLiteral("--use"), QStringLiteral("My Mix")},
                                       QStringList{QStringLiteral("--use=My Mix")}}) {
        const CommandLine line = parse(options);
        QCOMPARE(line.request, CommandLine::Request::Command);
        QCOMPARE(line.command, Commands::find(QStringLiteral("use")));
        QCOMPARE(line.call.values, QStringList{QStringLiteral("My Mix")});
        QVERIFY(!line.call.json);
    }
    const CommandLine show = parse({QStringLiteral("--show"), QStringLiteral("--verbose")});
    QCOMPARE(show.request, CommandLine::Request::Command);
    QVERIFY(show.call.values.isEmpty());
    // A name that looks like an option.
    QCOMPARE(parse({QStringLiteral("--use=--list")}).call.values, QStringList{QStringLiteral("--list")});
}

void tst_CommandLine::jsonGoesWithWhatAnswers()
{
    for (const char *option : {"--list", "--status"}) {
        const CommandLine line = parse({QLatin1String(option), QStringLiteral("--json")});
        QCOMPARE(line.request, CommandLine::Request::Command);
        QVERIFY(line.call.json);
    }
    for (const QStringList &options : {QStringList{QStringLiteral("--json")},
                                       QStringList{QStringLiteral("--show"), QStringLiteral("--json")}}) {
        const CommandLine line = parse(options);
        QCOMPARE(line.request, CommandLine::Request::Mistake);
        QCOMPARE(line.message, QStringLiteral("--json goes with --list and --status."));
    }
}

void tst_CommandLine::commandsGoWithNothingElse()
{
    const CommandLine two = parse({QStringLiteral("--list"), QStringLiteral("--show")});
    QCOMPARE(two.request, CommandLine::Request::Mistake);
    QCOMPARE(two.message, QStringLiteral("--list and --show do not go together."));
    const CommandLine start = parse({QStringLiteral("--list"), QStringLiteral("--port=COM3")});
    QCOMPARE(start.request, CommandLine::Request::Mistake);
    QCOMPARE(start.message, QStringLiteral("--port and --list do not go together."));
    const CommandLine stray = parse({QStringLiteral("--use"), QStringLiteral("My"), QStringLiteral("Mix")});
    QCOMPARE(stray.request, CommandLine::Request::Mistake);
    QCOMPARE(stray.message, QStringLiteral("Unexpected argument: Mix"));
}

void tst_CommandLine::aCommandThatLacksAValueIsAMistake()
{
    const CommandLine line = parse({QStringLiteral("--use")});
    QCOMPARE(line.request, CommandLine::Request::Mistake);
    QVERIFY2(line.message.contains(QLatin1String("--use")), qPrintable(line.message));
}

void tst_CommandLine::whatOnlyAStartTakesIsNoted()
{
    QVERIFY(parse({QStringLiteral("--verbose")}).forStart.isEmpty());
    QCOMPARE(parse({QStringLiteral("--port=COM3"), QStringLiteral("--input=auto")}).forStart,
             QStringList({QStringLiteral("--port"), QStringLiteral("--input")}));
    // What the environment says is for every start.
    QVERIFY(CommandLine::parse({QStringLiteral("veltrix")}, QStringLiteral("/dev/ttyX")).forStart.isEmpty());
}

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_CommandLine.moc"
