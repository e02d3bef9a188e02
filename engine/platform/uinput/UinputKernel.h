#pragma once

#include <QByteArray>
#include <QVector>
#include <QtGlobal>

/// What a device that is to be made in the kernel looks like. Codes are the kernel's.
struct DeviceDescription {
    QByteArray name;
    QVector<quint16> keys;     ///< keys and buttons
    QVector<quint16> relative; ///< axes that report steps
    QVector<quint16> leds;     ///< lights that the desktop may switch
    int absoluteMaximum = 0;   ///< other than 0: a place from (0,0) to this in both directions
};

/// The kernel's input devices as libevdev makes them. One request per call, no logic in it. What fails
/// returns the negative error number of the system.
class UinputKernel
{
    Q_DISABLE_COPY_MOVE(UinputKernel)

public:
    UinputKernel() = default;
    virtual ~UinputKernel() = default;

    /// Makes a device. @return its number, to be used with the other calls
    virtual int create(const DeviceDescription &description) = 0;

    /// Takes a device away; the kernel lets go of all that it holds.
    virtual void destroy(int device) = 0;

    virtual int write(int device, quint16 type, quint16 code, qint32 value) = 0;

    /// What tells, by becoming readable, that the desktop has written to the device.
    virtual int descriptor(int device) const = 0;

    struct Event {
        quint16 type = 0;
        quint16 code = 0;
        qint32 value = 0;
    };

    /// Reads what the desktop has written to a device, without waiting.
    /// @return false when there is nothing (more)
    virtual bool read(int device, Event &event) = 0;
};
