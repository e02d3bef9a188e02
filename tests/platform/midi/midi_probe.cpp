// Does with the MIDI ports what its standard input says, a command a line, and answers each with a line:
//
//   create           create the output port                    created MILLISECONDS
//   choose           choose the output port                    chose NAME
//   send HEX         send one message                          sent
//   flood COUNT      send COUNT times 90 3C 64                 flooded MILLISECONDS
//   note NUMBER      begin a note that its release would end  begun
//   off NUMBER       end it                                   ended
//   owed COUNT       have what is owed sent now, for at most COUNT milliseconds   tried MILLISECONDS
//   late COUNT       make each callback take COUNT milliseconds  late
//   linger COUNT     make each callback take COUNT milliseconds once its queue is empty   lingers
//   refuse COUNT     have the COUNTth client of the release process refused   refused
//   expel            have the first client of the release process thrown out   expelled
//   close            close the port                            closed MILLISECONDS
//   delete           delete the port                           deleted MILLISECONDS
//   threads          count the threads of the process          threads COUNT
//   cpu              processor time spent so far               cpu MILLISECONDS
//   outputs          list the MIDI outputs on the server       outputs NAME, NAME
//   input HEX        send HEX to an input port of our own      got BYTE0 BYTE1 BYTE2
//
// Ends with its standard input. Log lines stand between the answers, after "log ". "input" logs the MIDI
// inputs on the server.

#include "app/AfterCrash.h"
#include "engine/MidiActions.h"
#include "engine/SystemClock.h"
#include "midi/MidiInPort.h"
#include "midi/MidiOutPort.h"
#include "midi/OwedMessages.h"
#include "tests/platform/midi/late_callbacks.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTimer>

#include <RtMidi.h>
#include <chrono>
#include <ctime>
#include <iostream>
#include <memory>
#include <mutex>
#include <string>

namespace
{

std::mutex output; // log lines come from several threads

void log(QtMsgType, const QMessageLogContext &, const QString &text)
{
    const std::lock_guard lock(output);
    std::cout << "log " << text.toStdString() << std::endl;
}

std::vector<unsigned char> bytesOf(const std::string &hex)
{
    const QByteArray bytes = QByteArray::fromHex(QByteArray::fromStdString(hex));
    return {bytes.begin(), bytes.end()};
}

// What a client of the server's can be connected to.
QString portsFor(RtMidi &client)
{
    QStringList names;
    for (unsigned int index = 0; index < client.getPortCount(); ++index) {
        names.append(QString::fromStdString(client.getPortName(index)));
    }
    return names.join(QStringLiteral(", "));
}

std::string receive(const std::string &hex)
{
    RtMidiOut source(RtMidi::UNIX_JACK, "source");
    source.openVirtualPort("keys");
    MidiInPort port;
    const int index = port.portNames().indexOf(QStringLiteral("source:keys"));
    if (port.openPort(index) != 0)
        return "no port";
    log(QtInfoMsg, QMessageLogContext(), QStringLiteral("inputs ") + portsFor(source));
    QString got;
    QObject::connect(&port, &MidiInPort::gotMessage, qApp,
                     [&](const QString &byte0, const QString &byte1, const QString &byte2) {
                         got = QStringLiteral("got %1 %2 %3").arg(byte0, byte1, byte2);
                         QCoreApplication::quit();
                     });
    QTimer::singleShot(5000, qApp, &QCoreApplication::quit);
    // A new connection carries messages from the server's next cycle on.
    const std::vector<unsigned char> message = bytesOf(hex);
    QTimer repeat;
    QObject::connect(&repeat, &QTimer::timeout, qApp, [&] { source.sendMessage(&message); });
    repeat.start(50);
    QCoreApplication::exec();
    return got.toStdString();
}

class Probe
{
    Q_DISABLE_COPY_MOVE(Probe)

public:
    explicit Probe(AfterCrash &afterCrash)
        : m_owed(afterCrash.messages)
    {
    }

    ~Probe()
    {
        if (m_port && m_actions) {
            m_actions->closePort();
        }
    }

    std::string answer(const std::string &command, const std::string &argument)
    {
        QElapsedTimer timer;
        timer.start();
        const auto took = [&timer] { return " " + std::to_string(timer.elapsed()); };
        if (command == "create") {
            m_port = std::make_unique<MidiOutPort>();
            return "created" + took();
        }
        if (command == "choose") {
            m_actions = std::make_unique<MidiActions>(*m_port, m_owed, m_clock);
            return "chose " + m_actions->chooseOutputPort().toStdString();
        }
        if (command == "note") {
            m_actions->sendMidi(1, std::stoi(argument), 100, 0, true, true, true);
            return "begun";
        }
        if (command == "off") {
            m_actions->sendMidi(1, std::stoi(argument), 100, 0, true, true, false);
            return "ended";
        }
        if (command == "owed") {
            m_owed.send(std::chrono::milliseconds(std::stoi(argument)));
            return "tried" + took();
        }
        if (command == "send") {
            std::vector<unsigned char> message = bytesOf(argument);
            m_port->sendMessage(&message);
            return "sent";
        }
        if (command == "flood") {
            std::vector<unsigned char> message{0x90, 0x3C, 0x64};
            for (int i = std::stoi(argument); i > 0; --i)
                m_port->sendMessage(&message);
            return "flooded" + took();
        }
        if (command == "late") {
            beLate(std::stoi(argument));
            return "late";
        }
        if (command == "linger") {
            lingerWhenEmpty(std::stoi(argument));
            return "lingers";
        }
        if (command == "refuse") {
            refuseAfterCrash(std::stoi(argument));
            return "refused";
        }
        if (command == "expel") {
            expelAfterCrash();
            return "expelled";
        }
        if (command == "close") {
            m_port->closePort();
            return "closed" + took();
        }
        if (command == "delete") {
            m_port.reset();
            return "deleted" + took();
        }
        if (command == "threads")
            return "threads " + std::to_string(QDir(QStringLiteral("/proc/self/task"))
                                                   .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
                                                   .size());
        if (command == "cpu")
            return "cpu " + std::to_string(1000 * std::clock() / CLOCKS_PER_SEC);
        if (command == "outputs") {
            RtMidiIn client(RtMidi::UNIX_JACK, "client");
            return "outputs " + portsFor(client).toStdString();
        }
        if (command == "input")
            return receive(argument);
        return "what?";
    }

private:
    SystemClock m_clock;
    OwedMessages &m_owed;
    std::unique_ptr<MidiOutPort> m_port;
    std::unique_ptr<MidiActions> m_actions;
};

} // namespace

int main(int argc, char **argv)
{
    const PlatformFactory platforms(AfterCrash::task());
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(log);
    Probe probe(AfterCrash::in(platforms.crashMemory()));
    for (std::string line; std::getline(std::cin, line);) {
        const std::size_t blank = line.find(' ');
        const std::string argument = blank == std::string::npos ? "" : line.substr(blank + 1);
        const std::string answer = probe.answer(line.substr(0, blank), argument);
        const std::lock_guard lock(output);
        std::cout << answer << std::endl;
    }
    return 0;
}
