#include "engine/platform/x11/CrashRelease.h"

#include <X11/Xlib-xcb.h>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xtest.h>

namespace
{

constexpr int patience = 200;     // ms that the program's end waits for the process
constexpr int endPatience = 5000; // ms that the process waits for the program's end

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

void release(Display *display, quint8 event, quint8 detail)
{
    xcb_test_fake_input(XGetXCBConnection(display), event, detail, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                        0);
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
            release(display, XCB_KEY_RELEASE, quint8(keycode));
        }
    }
    if (held.leftButton()) {
        release(display, XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1);
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

/// What the two processes share: memory of the system's own, which is never given back, since other objects
/// may go later than the one that asks for it here.
void *sharedMemory(std::size_t bytes)
{
    void *memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : memory;
}

/// The pipe is closed before the program has gone for good: at once where the toolkit ends it from within,
/// with the loss of the X server, and otherwise among its other files. It may still have its locks and
/// connections.
void awaitEndOf(pid_t program)
{
    const auto process = int(syscall(SYS_pidfd_open, program, 0));
    if (process >= 0) {
        pollfd end = {process, POLLIN, 0};
        poll(&end, 1, endPatience);
        close(process);
    }
}

[[noreturn]] void watch(int pipe, pid_t program, const HeldInput &held, const CrashTask &task,
                        void *taskMemory)
{
    const int end = detach(pipe);
    char byte = 0;
    while (read(end, &byte, 1) > 0 || errno == EINTR) {
        errno = 0;
    }
    if (!held.isEmpty()) {
        releaseHeld(held);
    }
    if (task.afterwards && task.isDue(taskMemory, program)) {
        awaitEndOf(program);
        task.afterwards(taskMemory, program);
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

    void *start(const CrashTask &task);

    HeldInput &held() { return m_shared ? *m_shared : m_own; }
    const QString &problem() const { return m_problem; }

private:
    HeldInput m_own;
    HeldInput *m_shared = nullptr;
    void *m_taskMemory = nullptr;
    QString m_problem;
    int m_pipe = -1;
    pid_t m_process = -1;
};

void *Watchdog::start(const CrashTask &task)
{
    if (m_process > 0) {
        return m_taskMemory;
    }
    int ends[2];
    void *memory = sharedMemory(sizeof(HeldInput));
    void *taskMemory = sharedMemory(std::max<std::size_t>(task.bytes, 1));
    if (!memory || !taskMemory || pipe2(ends, O_CLOEXEC) != 0) {
        m_problem = QString::fromLocal8Bit(std::strerror(errno));
        return nullptr;
    }
    auto *shared = new (memory) HeldInput;
    const pid_t program = getpid();
    m_process = fork();
    if (m_process == 0) {
        watch(ends[0], program, *shared, task, taskMemory);
    }
    close(ends[0]);
    if (m_process < 0) {
        m_problem = QString::fromLocal8Bit(std::strerror(errno));
        close(ends[1]);
        return nullptr;
    }
    m_shared = shared;
    m_taskMemory = taskMemory;
    m_pipe = ends[1];
    return taskMemory;
}

Watchdog::~Watchdog()
{
    if (m_process <= 0) {
        return;
    }
    close(m_pipe);
    // With nothing to do it ends at once, and nothing of the program is left when the shell prompts again.
    // What takes longer holds nobody up.
    for (int waited = 0; waited < patience && waitpid(m_process, nullptr, WNOHANG) == 0; ++waited) {
        usleep(1000);
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

void *CrashRelease::start(const CrashTask &task)
{
    return watchdog().start(task);
}
