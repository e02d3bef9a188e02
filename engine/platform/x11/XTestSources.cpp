#include "engine/platform/x11/XTestSources.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

namespace
{

bool hasXTestProperty(Display *display, int device, Atom property)
{
    Atom type = None;
    int format = 0;
    unsigned long items = 0;
    unsigned long left = 0;
    unsigned char *data = nullptr;
    const bool found = XIGetProperty(display, device, property, 0, 1, False, XA_INTEGER, &type, &format,
                                     &items, &left, &data) == Success &&
                       items == 1 && format == 8 && data[0] == 1;
    if (data) {
        XFree(data);
    }
    return found;
}

/// Calls @p use with each XTEST device.
template <typename Use>
void forEach(Display *display, Use use)
{
    const Atom property = XInternAtom(display, "XTEST Device", True);
    if (property == None) {
        return;
    }
    int count = 0;
    XIDeviceInfo *devices = XIQueryDevice(display, XIAllDevices, &count);
    for (int i = 0; devices && i < count; ++i) {
        const bool slave = devices[i].use == XISlavePointer || devices[i].use == XISlaveKeyboard;
        if (slave && hasXTestProperty(display, devices[i].deviceid, property)) {
            use(devices[i]);
        }
    }
    if (devices) {
        XIFreeDeviceInfo(devices);
    }
}

} // namespace

QVector<int> XTestSources::all(_XDisplay *display)
{
    QVector<int> ids;
    forEach(display, [&ids](const XIDeviceInfo &device) { ids.append(device.deviceid); });
    return ids;
}

int XTestSources::keyboard(_XDisplay *display)
{
    int pointer = 0;
    int keyboard = 0;
    if (!XIGetClientPointer(display, None, &pointer)) {
        return 0;
    }
    int count = 0;
    XIDeviceInfo *master = XIQueryDevice(display, pointer, &count);
    const int paired = master && count > 0 ? master->attachment : 0;
    if (master) {
        XIFreeDeviceInfo(master);
    }
    forEach(display, [&keyboard, paired](const XIDeviceInfo &device) {
        if (device.use == XISlaveKeyboard && device.attachment == paired) {
            keyboard = device.deviceid;
        }
    });
    return keyboard;
}
