/*
 * The least program that turns the device's reports into keys: read, inject, flush.
 * Buttons 0 to 9 press the keys a to j. It checks no more than it must.
 */
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <fcntl.h>
#include <stdio.h>
#include <termios.h>
#include <unistd.h>

enum { BUTTONS = 10, MESSAGE = 6 };

static int openPort(const char *path)
{
    struct termios settings;
    const int port = open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (port < 0 || tcgetattr(port, &settings) != 0)
        return -1;
    cfmakeraw(&settings);
    return tcsetattr(port, TCSANOW, &settings) == 0 ? port : -1;
}

int main(int argc, char **argv)
{
    Display *display = XOpenDisplay(NULL);
    const int port = argc == 2 ? openPort(argv[1]) : -1;
    KeyCode keys[BUTTONS];
    char bytes[4096];
    ssize_t held = 0;

    if (display == NULL || port < 0) {
        fprintf(stderr, "usage: veltrix-relay PORT, with DISPLAY set\n");
        return 1;
    }
    for (int i = 0; i < BUTTONS; ++i)
        keys[i] = XKeysymToKeycode(display, XK_a + (KeySym)i);

    for (;;) {
        const ssize_t length = read(port, bytes + held, sizeof bytes - (size_t)held);
        ssize_t at = 0;
        if (length <= 0)
            return 0;
        held += length;
        for (; held - at >= MESSAGE; at += MESSAGE) {
            const int button = bytes[at + 2] - '0';
            if (bytes[at] == 'B' && button >= 0 && button < BUTTONS)
                XTestFakeKeyEvent(display, keys[button], bytes[at + 1] == 'P', CurrentTime);
        }
        XFlush(display);
        held -= at;
        for (ssize_t i = 0; i < held; ++i)
            bytes[i] = bytes[at + i];
    }
}
