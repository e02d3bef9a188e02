#include "tests/support/xserver/XServer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSize>
#include <QtEndian>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>
#include <csignal>
#include <sys/prctl.h>

namespace
{

/// A server that ends when the test program does, however that ends.
class ServerProcess : public QProcess
{
protected:
    void setupChildProcess() override { prctl(PR_SET_PDEATHSIG, SIGTERM); }
};

/// "1280x1024" as a size.
QSize sizeOf(const QString &screen)
{
    return QSize(screen.section(QLatin1Char('x'), 0, 0).toInt(),
                 screen.section(QLatin1Char('x'), 1, 1).toInt());
}

} // namespace

XServer::Options XServer::Options::atScale()
{
    Options options;
    if (qEnvironmentVariable("QT_SCALE_FACTOR") == QLatin1String("2")) {
        options.screens = QStringList{QStringLiteral("2560x2048")};
    }
    return options;
}

XServer::XServer()
    : XServer(Options())
{
}

XServer::XServer(const Options &options)
{
    start(options);
}

XServer::~XServer()
{
    stop();
}

void XServer::start(const Options &options)
{
    // The server writes the display number that it found free to its standard output.
    QStringList arguments = {QStringLiteral("x"), QStringLiteral("1")};
    QSize desktop;
    for (const QString &screen : options.screens) {
        const QSize size = sizeOf(screen);
        desktop = QSize(desktop.width() > 0 ? desktop.width() + size.width() : size.width(),
                        qMax(desktop.height(), size.height()));
    }
    arguments << QStringLiteral("-screen") << QStringLiteral("0")
              << QStringLiteral("%1x%2x24").arg(desktop.width()).arg(desktop.height());
    if (options.framebufferFile) {
        m_framebufferDir = std::make_unique<QTemporaryDir>();
        arguments << QStringLiteral("-fbdir") << m_framebufferDir->path();
    }
    arguments << options.arguments;

    m_process = std::make_unique<ServerProcess>();
    m_process->setStandardErrorFile(QProcess::nullDevice());
    m_process->start(QStringLiteral(START_SERVER), arguments, QIODevice::ReadOnly);
    QByteArray number;
    QElapsedTimer patience;
    patience.start();
    while (!number.endsWith('\n')) {
        if (m_process->state() == QProcess::NotRunning || patience.elapsed() > 30000) {
            m_error = QStringLiteral("Xvfb did not start: ") + m_process->errorString();
            stop();
            return;
        }
        m_process->waitForReadyRead(1000);
        number += m_process->readAllStandardOutput();
    }
    m_display = ':' + number.trimmed();
    if (!setLayout(options.layout)) {
        m_error = QStringLiteral("cannot set the keyboard layout ") + options.layout;
        stop();
    } else if (options.screens.size() > 1 && !setMonitors(options.screens)) {
        m_error = QStringLiteral("cannot divide the screen into monitors");
        stop();
    }
}

void XServer::stop()
{
    if (m_process && m_process->state() != QProcess::NotRunning) {
        m_process->terminate();
        if (!m_process->waitForFinished(5000)) {
            m_process->kill();
            m_process->waitForFinished(5000);
        }
    }
    m_process.reset();
    m_display.clear();
}

QProcessEnvironment XServer::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_display));
    for (const char *name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY"}) {
        environment.remove(QLatin1String(name));
    }
    return environment;
}

void XServer::exportDisplay() const
{
    qputenv("DISPLAY", m_display);
    // Nothing here is drawn with OpenGL, whose drivers take long to load and leave memory behind.
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    for (const char *name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY"}) {
        qunsetenv(name);
    }
}

bool XServer::setMonitors(const QStringList &sizes)
{
    Display *display = XOpenDisplay(m_display.constData());
    if (!display) {
        return false;
    }
    const Window root = DefaultRootWindow(display);
    XRRScreenResources *resources = XRRGetScreenResources(display, root);
    int x = 0;
    for (int i = 0; i < sizes.size() && resources->noutput > 0; ++i) {
        const QSize size = sizeOf(sizes.at(i));
        const QByteArray name = "monitor-" + QByteArray::number(i);
        XRRMonitorInfo *monitor = XRRAllocateMonitor(display, i == 0 ? 1 : 0);
        monitor->name = XInternAtom(display, name.constData(), False);
        monitor->primary = i == 0;
        monitor->x = x;
        monitor->width = size.width();
        monitor->height = size.height();
        if (i == 0) {
            monitor->outputs[0] = resources->outputs[0]; // takes the place of the one that covers everything
        }
        XRRSetMonitor(display, root, monitor);
        XRRFreeMonitors(monitor);
        x += size.width();
    }
    XRRFreeScreenResources(resources);
    int count = 0;
    XRRFreeMonitors(XRRGetMonitors(display, root, True, &count));
    XCloseDisplay(display);
    return count == sizes.size();
}

bool XServer::setLayout(const QString &layout)
{
    QProcess describe;
    QProcess compile;
    describe.setStandardOutputProcess(&compile);
    compile.setProcessChannelMode(QProcess::MergedChannels);
    const QString name = QString::fromLatin1(m_display);
    describe.start(QStringLiteral("setxkbmap"), {QStringLiteral("-display"), name, QStringLiteral("-layout"),
                                                 layout, QStringLiteral("-print")});
    compile.start(QStringLiteral("xkbcomp"), {QStringLiteral("-w0"), QStringLiteral("-"), name});
    return describe.waitForFinished() && describe.exitCode() == 0 && compile.waitForFinished() &&
           compile.exitStatus() == QProcess::NormalExit && compile.exitCode() == 0;
}

quint32 XServer::pixel(int x, int y) const
{
    if (!m_framebufferDir) {
        return 0xffffffffU;
    }
    QFile file(m_framebufferDir->filePath(QStringLiteral("Xvfb_screen0")));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0xffffffffU;
    }
    // The file has the form of an xwd dump: a header of 32-bit big-endian words, then the colour map, then
    // the rows.
    const QByteArray header = file.read(100);
    const auto word = [&header](int index) {
        return qFromBigEndian<quint32>(header.constData() + std::ptrdiff_t(4) * index);
    };
    const quint32 headerSize = word(0);
    const quint32 bytesPerLine = word(12);
    const quint32 colours = word(19);
    const qint64 bytesPerColour = 12;
    file.seek(headerSize + colours * bytesPerColour + qint64(y) * bytesPerLine + qint64(x) * 4);
    const QByteArray bytes = file.read(4);
    return bytes.size() == 4 ? qFromLittleEndian<quint32>(bytes.constData()) & 0xffffffU : 0xffffffffU;
}
