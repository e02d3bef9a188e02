#include "engine/platform/uinput/LibEvdev.h"
#include "engine/platform/uinput/UinputDevices.h"
#include "tests/support/main/Main.h"
#include "tests/support/uinput/RecordingKernel.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <linux/input.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

// What ctest takes for "skipped".
constexpr int skipped = 77;

const DeviceDescription keyboard{"Veltrix test keyboard", {KEY_A, KEY_B, KEY_NUMLOCK}, {}, {LED_NUML}, 0};
const DeviceDescription pointer{"Veltrix test pointer", {BTN_LEFT}, {REL_X, REL_Y}, {}, 0};
const DeviceDescription jumps{"Veltrix test jumps", {BTN_LEFT}, {}, {}, UinputDevices::places};

/// A program that reads a device.
class Reader
{
    Q_DISABLE_COPY_MOVE(Reader)

public:
    explicit Reader(const QByteArray &node)
        : m_file(open(node.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~Reader() { close(m_file); }

    bool isOpen() const { return m_file >= 0; }

    /// What has arrived, in RecordingKernel's words.
    QStringList takeLines()
    {
        QStringList lines;
        pollfd ready{m_file, POLLIN, 0};
        input_event event{};
        while (poll(&ready, 1, 100) > 0 && ::read(m_file, &event, sizeof event) == ssize_t(sizeof event)) {
            const char *type = event.type == EV_KEY   ? "key"
                               : event.type == EV_REL ? "rel"
                               : event.type == EV_ABS ? "abs"
                                                      : nullptr;
            if (type) {
                lines << QStringLiteral("%1 %2 %3").arg(QLatin1String(type)).arg(event.code).arg(event.value);
            }
        }
        return lines;
    }

    void write(const UinputKernel::Event &what)
    {
        input_event event{};
        event.type = what.type;
        event.code = what.code;
        event.value = what.value;
        QCOMPARE(::write(m_file, &event, sizeof event), ssize_t(sizeof event));
    }

private:
    int m_file;
};

/// The same to both: everything that is special about the kernel.
void act(UinputKernel &kernel, int device, int kind)
{
    const auto send = [&](quint16 type, quint16 code, qint32 value) {
        QCOMPARE(kernel.write(device, type, code, value), 0);
        QCOMPARE(kernel.write(device, EV_SYN, SYN_REPORT, 0), 0);
    };
    switch (kind) {
    case 0:
        send(EV_KEY, KEY_A, 1);
        send(EV_KEY, KEY_A, 1); // is down already
        send(EV_KEY, KEY_B, 0); // is up already
        send(EV_KEY, KEY_C, 1); // not one of its keys
        send(EV_KEY, KEY_A, 0);
        break;
    case 1:
        send(EV_REL, REL_X, 1);
        send(EV_REL, REL_Y, -300);
        send(EV_REL, REL_X, 0);
        send(EV_KEY, BTN_LEFT, 1);
        send(EV_KEY, BTN_LEFT, 0);
        break;
    default:
        send(EV_ABS, ABS_X, 40000);
        send(EV_ABS, ABS_Y, 100);
        send(EV_ABS, ABS_X, 40000); // is there already
        send(EV_ABS, ABS_X, 40001);
        break;
    }
}

} // namespace

class tst_LibEvdev : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDoubleDoesWhatTheKernelDoes_data();
    void theDoubleDoesWhatTheKernelDoes();
    void lightsComeFromTheDesktop();
    void aDestroyedDeviceIsGone();
    void aKilledProgramsDeviceIsGone();
};

void tst_LibEvdev::theDoubleDoesWhatTheKernelDoes_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("keyboard") << 0;
    QTest::newRow("steps") << 1;
    QTest::newRow("jumps") << 2;
}

void tst_LibEvdev::theDoubleDoesWhatTheKernelDoes()
{
    QFETCH(int, kind);
    const DeviceDescription &description = kind == 0 ? keyboard : kind == 1 ? pointer : jumps;
    LibEvdev real;
    RecordingKernel recording;
    const int device = real.create(description);
    QVERIFY(device >= 0);
    QTRY_VERIFY(QFileInfo::exists(QString::fromLatin1(real.node(device))));
    Reader reader(real.node(device));
    QVERIFY(reader.isOpen());
    act(real, device, kind);
    act(recording, recording.create(description), kind);
    QCOMPARE(recording.takeLines(), reader.takeLines());
}

void tst_LibEvdev::lightsComeFromTheDesktop()
{
    LibEvdev real;
    const int device = real.create(keyboard);
    QTRY_VERIFY(QFileInfo::exists(QString::fromLatin1(real.node(device))));
    Reader desktop(real.node(device));
    // What is so already is no event, and the console switches lights too.
    for (const qint32 value : {0, 1, 0}) {
        desktop.write({EV_LED, LED_NUML, value});
        desktop.write({EV_SYN, SYN_REPORT, 0});
    }
    QVector<qint32> values;
    const auto readAll = [&] {
        UinputKernel::Event event;
        while (real.read(device, event)) {
            if (event.type == EV_LED && event.code == LED_NUML) {
                values << event.value;
            }
        }
        return values.size();
    };
    QTRY_VERIFY(readAll() >= 2);
    QCOMPARE(values.mid(values.size() - 2), QVector<qint32>({1, 0}));
}

void tst_LibEvdev::aDestroyedDeviceIsGone()
{
    LibEvdev real;
    const int device = real.create(keyboard);
    QTRY_VERIFY(QFileInfo::exists(QString::fromLatin1(real.node(device))));
    const QString node = QString::fromLatin1(real.node(device));
    Reader reader(real.node(device));
    real.write(device, EV_KEY, KEY_A, 1);
    real.write(device, EV_SYN, SYN_REPORT, 0);
    QCOMPARE(reader.takeLines(), QStringList{QStringLiteral("key 30 1")});
    real.destroy(device);
    QTRY_VERIFY(!QFileInfo::exists(node)); // and with it all that it held
    QVERIFY(real.write(device, EV_KEY, KEY_A, 0) < 0);
}

void tst_LibEvdev::aKilledProgramsDeviceIsGone()
{
    int ends[2];
    QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
    const pid_t program = fork();
    if (program == 0) {
        LibEvdev real;
        const int device = real.create(keyboard);
        real.write(device, EV_KEY, KEY_A, 1);
        real.write(device, EV_SYN, SYN_REPORT, 0);
        const QByteArray name = real.node(device);
        [[maybe_unused]] const ssize_t written = write(ends[1], name.constData(), size_t(name.size()));
        pause();
        _exit(1);
    }
    close(ends[1]);
    char name[64] = "";
    const ssize_t length = ::read(ends[0], name, sizeof name - 1);
    close(ends[0]);
    const QString node = QString::fromLatin1(name);
    const bool wasThere = length > 0 && QFileInfo::exists(node);
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    QVERIFY(wasThere);
    QTRY_VERIFY(!QFileInfo::exists(node));
}

int main(int argc, char **argv)
{
    if (access(LibEvdev::path, R_OK | W_OK) != 0) {
        std::fprintf(
            stderr,
            "SKIPPED: %s cannot be opened for reading and writing, so the device layer is not compared "
            "with the kernel\n",
            LibEvdev::path);
        return skipped;
    }
    const QCoreApplication application(argc, argv);
    tst_LibEvdev test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_LibEvdev.moc"
