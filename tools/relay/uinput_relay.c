/*
 * The same as relay.c through the kernel: read, write the events. Buttons 0 to 9 press the keys a to j of the
 * first layout that most keyboards have.
 */
#include <fcntl.h>
#include <linux/uinput.h>
#include <stdio.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

enum { BUTTONS = 10, MESSAGE = 6 };

static const unsigned short keys[BUTTONS] = {KEY_A, KEY_B, KEY_C, KEY_D, KEY_E,
                                             KEY_F, KEY_G, KEY_H, KEY_I, KEY_J};

static int openPort(const char *path)
{
    struct termios settings;
    const int port = open(path, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (port < 0 || tcgetattr(port, &settings) != 0)
        return -1;
    cfmakeraw(&settings);
    return tcsetattr(port, TCSANOW, &settings) == 0 ? port : -1;
}

static int makeKeyboard(void)
{
    struct uinput_setup setup = {.id.bustype = BUS_VIRTUAL, .name = "Relay keyboard"};
    const int keyboard = open("/dev/uinput", O_RDWR | O_CLOEXEC);
    if (keyboard < 0 || ioctl(keyboard, UI_SET_EVBIT, EV_KEY) != 0)
        return -1;
    /* Fewer keys than a keyboard's, and the desktop would take it for something else. */
    for (int key = KEY_ESC; key <= KEY_F12; ++key)
        ioctl(keyboard, UI_SET_KEYBIT, key);
    return ioctl(keyboard, UI_DEV_SETUP, &setup) == 0 && ioctl(keyboard, UI_DEV_CREATE) == 0 ? keyboard : -1;
}

int main(int argc, char **argv)
{
    const int keyboard = makeKeyboard();
    const int port = argc == 2 ? openPort(argv[1]) : -1;
    char bytes[4096];
    ssize_t held = 0;

    if (keyboard < 0 || port < 0) {
        fprintf(stderr, "usage: veltrix-uinput-relay PORT, with the right to use /dev/uinput\n");
        return 1;
    }
    for (;;) {
        const ssize_t length = read(port, bytes + held, sizeof bytes - (size_t)held);
        ssize_t at = 0;
        if (length <= 0)
            return 0;
        held += length;
        for (; held - at >= MESSAGE; at += MESSAGE) {
            const int button = bytes[at + 2] - '0';
            if (bytes[at] == 'B' && button >= 0 && button < BUTTONS) {
                const struct input_event events[] = {
                    {.type = EV_KEY, .code = keys[button], .value = bytes[at + 1] == 'P'},
                    {.type = EV_SYN, .code = SYN_REPORT},
                };
                if (write(keyboard, events, sizeof events) != sizeof events)
                    return 1;
            }
        }
        held -= at;
        for (ssize_t i = 0; i < held; ++i)
            bytes[i] = bytes[at + i];
    }
}
