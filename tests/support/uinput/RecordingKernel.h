#pragma once

#include "engine/platform/uinput/UinputKernel.h"

#include <QList>
#include <QMap>
#include <QStringList>

/// The kernel's input devices in memory: takes down what a program that reads a device would see, one line
/// per event ("key 30 1", "rel 0 -5", "abs 1 4000"), without the reports that only end a group.
///
/// Like the kernel it drops what changes nothing (a key that is down already, a step of 0, the place where it
/// is), and lets go of everything when a device goes. A test compares it with the real thing.
class RecordingKernel final : public UinputKernel
{
    Q_DISABLE_COPY_MOVE(RecordingKernel)

public:
    RecordingKernel();
    ~RecordingKernel() override;

    int create(const DeviceDescription &description) override;
    void destroy(int device) override;
    int write(int device, quint16 type, quint16 code, qint32 value) override;
    int descriptor(int device) const override;
    bool read(int device, Event &event) override;

    /// What has arrived since the last call, from all devices.
    QStringList takeLines();

    /// The keys and buttons that are down, of all devices.
    QVector<quint16> held() const;

    int deviceCount() const { return m_devices.size(); }

    /// The number of the device of this name; -1 when there is none.
    int find(const QByteArray &name) const;

    /// From now on making a device fails with this error number; 0: does not fail.
    void failCreation(int error) { m_creationError = error; }

    /// The next write fails with this error number.
    void failNextWrite(int error) { m_writeError = error; }

    /// The desktop writes to a device: switches a light.
    void writeFromDesktop(int device, const Event &event);

private:
    struct Device {
        DeviceDescription description;
        QVector<quint16> held;
        QMap<quint16, qint32> places;
        QList<Event> fromDesktop;
        int descriptor = -1;
    };

    QMap<int, Device> m_devices;
    QStringList m_lines;
    int m_next = 1;
    int m_creationError = 0;
    int m_writeError = 0;
};
