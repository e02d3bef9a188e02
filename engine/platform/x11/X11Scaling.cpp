#include "engine/platform/x11/X11Scaling.h"

#include "engine/platform/Session.h"

#include <QtGlobal>

#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>
#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace
{

QVector<X11Scaling::Screen> screensOf(Display *display)
{
    QVector<X11Scaling::Screen> screens;
    int event = 0;
    int error = 0;
    int major = 0;
    int minor = 0;
    if (!XRRQueryExtension(display, &event, &error) || !XRRQueryVersion(display, &major, &minor) ||
        major * 100 + minor < 105) {
        return screens; // the names are not known
    }
    int count = 0;
    XRRMonitorInfo *monitors = XRRGetMonitors(display, DefaultRootWindow(display), True, &count);
    for (int i = 0; i < count; ++i) {
        char *name = XGetAtomName(display, monitors[i].name);
        screens.append({name, monitors[i].width, monitors[i].height});
        XFree(name);
    }
    XRRFreeMonitors(monitors);
    return screens;
}

double dotsPerInch(Display *display)
{
    const char *resource = XGetDefault(display, "Xft", "dpi");
    const double wanted = resource != nullptr ? std::atof(resource) : 0;
    if (wanted > 0) {
        return wanted;
    }
    const int screen = DefaultScreen(display);
    const int millimetres = DisplayWidthMM(display, screen);
    return millimetres > 0 ? 25.4 * DisplayWidth(display, screen) / millimetres : 96;
}

} // namespace

double X11Scaling::factorFor(double dotsPerInch)
{
    // The toolkit rounds what it takes from the screen's dots per inch, which are seldom exact here: the
    // usual 100 would otherwise blur everything at 104 %.
    return std::max(1.0, std::round(dotsPerInch / 96));
}

QByteArray X11Scaling::cappedFactors(const QVector<Screen> &screens, double factor, int windowWidth,
                                     int windowHeight)
{
    QByteArray factors;
    for (const Screen &screen : screens) {
        const double fits = std::min(static_cast<double>(screen.width) / windowWidth,
                                     static_cast<double>(screen.height) / windowHeight);
        // Hundredths, rounded down.
        const int hundredths = static_cast<int>(std::floor(fits * 100));
        if (factor <= fits || hundredths <= 0 || screen.name.isEmpty()) {
            continue;
        }
        factors += factors.isEmpty() ? "" : ";";
        factors += screen.name + '=' + QByteArray::number(hundredths / 100.0, 'f', 2);
    }
    return factors;
}

const char *Session::fitToScreens(int windowWidth, int windowHeight)
{
    static constexpr char factors[] = "QT_SCREEN_SCALE_FACTORS";
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (qEnvironmentVariableIsSet(factors) || qEnvironmentVariableIsSet("QT_SCALE_FACTOR") ||
        !(platform.isEmpty() || platform.startsWith("xcb"))) {
        return nullptr;
    }
    Display *display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        return nullptr;
    }
    const QByteArray capped = X11Scaling::cappedFactors(
        screensOf(display), X11Scaling::factorFor(dotsPerInch(display)), windowWidth, windowHeight);
    XCloseDisplay(display);
    if (capped.isEmpty()) {
        return nullptr;
    }
    qputenv(factors, capped);
    return factors;
}
