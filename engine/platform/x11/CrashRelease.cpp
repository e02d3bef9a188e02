#include "engine/platform/x11/CrashRelease.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// Empties a keycode if it still carries the symbol that we put there.
void emptySpare(Display *display, KeyCode keycode, KeySym keysym)
{
    int width = 0;
    KeySym *symbols = XGetKeyboardMapping(display, keycode, 1, &width);
    if (symbols && width > 0 && symbols[0] == keysym) {
        KeySym none = NoSymbol;
        XChangeKeyboardMapping(display, keycode, 1, &none, 1);
    }
    if (symbols) {
        XFree(symbols);
    }
}

void releaseHeld(const HeldInput &held)
{
    Display *display = XOpenDisplay(held.display());
    if (!display) {
        return;
    }
    XSetErrorHandler([](Display *, XErrorEvent *) { return 0; });
    for (unsigned keycode = 0; keycode < 256; ++keycode) {
        if (held.key(quint8(keycode))) {
            XTestFakeKeyEvent(display, keycode, False, CurrentTime);
        }
    }
    if (held.leftButton()) {
        XTestFakeButtonEvent(display, Button1, False, CurrentTime);
    }
    XSync(display, False);
    XGrabServer(display); // nobody replaces the layout between the look and the change
    for (unsigned keycode = 0; keycode < 256; ++keycode) {
        if (const quint32 keysym = held.spare(quint8(keycode))) {
            emptySpare(display, KeyCode(keycode), keysym);
        }
    }
    XUngrabServer(display);
    XSync(display, False);
}

/// Lets go of everything that a process inherits: terminal, group, files, folder.
/// @return the pipe's new number
int detach(int pipe)
{
    setsid();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGTSTP, SIGUSR1, SIGUSR2, SIGALRM}) {
        std::signal(signal, SIG_IGN);
    }
    prctl(PR_SET_NAME, "veltrix-release");
    const int kept = fcntl(pipe, F_DUPFD_CLOEXEC, 3);
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (int standard = 0; standard < 3; ++standard) {
        dup2(nothing, standard);
    }
    if (kept > 3) {
        close_range(3, unsigned(kept) - 1, 0);
    }
    close_range(unsigned(kept) + 1, ~0U, 0);
    [[maybe_unused]] const int changed = chdir("/");
    return kept;
}

[[noreturn]] void watch(int pipe, const HeldInput &held)
{
    const int end = detach(pipe);
    char byte = 0;
    while (read(end, &byte, 1) > 0 || errno == EINTR) {
        errno = 0;
    }
    if (!held.isEmpty()) {
        releaseHeld(held);
    }
    _exit(0);
}

/// The program's side.
class Watchdog
{
    Q_DISABLE_COPY_MOVE(Watchdog)

public:
    Watchdog() = default;
    ~Watchdog();

    void start();

    HeldInput &held() { return m_shared ? *m_shared : m_own; }
    const QString &problem() const { return m_problem; }

private:
    HeldInput m_own;
    HeldInput *m_shared = nullptr; // never unmapped: other objects may go later than this one
    QString m_problem;
    int m_pipe = -1;
    pid_t m_process = -1;
};

void Watchdog::start()
{
    if (m_process > 0 || qEnvironmentVariableIsEmpty("DISPLAY")) {
        return;
    }
    int ends[2];
    void *memory =
        mmap(nullptr, sizeof(HeldInput), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED || pipe2(ends, O_CLOEXEC) != 0) {
        m_problem = QString::fromLocal8Bit(std::strerror(errno));
        return;
    }
    auto *shared = new (memory) HeldInput;
    m_process = fork();
    if (m_process == 0) {
        watch(ends[0], *shared);
    }
    close(ends[0]);
    if (m_process < 0) {
        m_problem = QString::fromLocal8Bit(std::strerror(errno));
        close(ends[1]);
        return;
    }
    m_shared = shared;
    m_pipe = ends[1];
}

Watchdog::~Watchdog()
{
    if (m_process <= 0) {
        return;
    }
    close(m_pipe);
    // With nothing to release it ends at once, and nothing of the program is left when the shell prompts
    // again.
    if (m_shared->isEmpty()) {
        while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

Watchdog &watchdog()
{
    static Watchdog instance;
    return instance;
}

} // namespace

HeldInput &CrashRelease::heldInput()
{
    return watchdog().held();
}

QString CrashRelease::problem()
{
    return watchdog().problem();
}

void CrashRelease::start()
{
    watchdog().start();
}
