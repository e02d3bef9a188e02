#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A private X server (Xvfb) for one test, on a display number of its own. It ends with the object, and with
/// the test program if that crashes.
class XServer
{
    Q_DISABLE_COPY_MOVE(XServer)

public:
    struct Options {
        /// Sizes of the monitors, which stand side by side. The first is the primary one.
        QStringList screens = {QStringLiteral("1280x1024")};
        QString layout = QStringLiteral("us");
        /// Keep the picture in a file, so that pixel() can read it.
        bool framebufferFile = false;
        /// Further arguments, for example {"-extension", "XTEST"}.
        QStringList arguments;

        /// One screen, with as many pixels as the toolkit's scale factor in the test's environment asks for.
        static Options atScale();
    };

    XServer();
    explicit XServer(const Options &options);
    ~XServer();

    /// True once the server accepts connections. When false, error() says why.
    bool isRunning() const { return !m_display.isEmpty(); }
    QString error() const { return m_error; }

    /// The display's name, for example ":101".
    QByteArray display() const { return m_display; }

    /// The test's environment with DISPLAY of this server and no Wayland, for programs that a test starts.
    QProcessEnvironment environment() const;

    /// Puts DISPLAY of this server into the environment of the test itself (and takes WAYLAND_DISPLAY out).
    void exportDisplay() const;

    /// Replaces the keyboard layout. Several, separated by commas, become the groups of one layout.
    bool setLayout(const QString &layout);

    /// The colour at a place of the first screen as 0xRRGGBB, the drawn pointer included. Needs
    /// framebufferFile.
    quint32 pixel(int x, int y) const;

    /// The process id of the server.
    qint64 processId() const { return m_process ? m_process->processId() : 0; }

    void stop();

private:
    void start(const Options &options);
    bool setMonitors(const QStringList &sizes);

    std::unique_ptr<QTemporaryDir> m_framebufferDir;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_display;
    QString m_error;
};
