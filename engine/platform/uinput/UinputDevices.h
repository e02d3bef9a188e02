#pragma once

#include "engine/platform/linux/PathWatch.h"
#include "engine/platform/uinput/UinputKernel.h"

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <array>
#include <memory>

/// The program's devices in the kernel: a keyboard, a pointer with a left button that moves by steps, and one
/// that jumps to a place.
///
/// They are made anew whenever they were lost: the kernel refused an event, or the user's right to make
/// devices was taken away (the seat was given to somebody else) and given back. With the devices goes all
/// that they hold.
class UinputDevices : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UinputDevices)

public:
    /// The jumping pointer's places go from 0 to this in both directions, over all screens together.
    static constexpr int places = 65535;

    /// Every key that an XKB layout can name: those with a keycode of up to 255.
    static constexpr quint16 lastKey = 255 - 8;

    /// @p kernel must outlive this object. @p path is the file whose rights decide.
    UinputDevices(UinputKernel &kernel, const QString &path);
    ~UinputDevices() override;

    /// Makes the devices. @return false when that is not possible; @p problem then says why.
    bool open(QString &problem);

    bool isOpen() const { return m_devices[Keyboard] >= 0; }

    /// One event each. @p key is the kernel's code. What cannot be sent is lost; the devices are made anew
    /// then, and a press is tried once more.
    void sendKey(quint16 key, bool down);
    void sendLeftButton(bool down);
    void moveBy(int dx, int dy);
    void jumpTo(int x, int y);

    /// Whether the desktop has switched NumLock's light on.
    bool isNumLockOn() const { return m_numLock; }

Q_SIGNALS:
    void numLockChanged();

private:
    enum Role { Keyboard, StepPointer, JumpPointer, Roles };
    using Events = QVector<UinputKernel::Event>;

    int create();
    void close();
    void lose(int error);
    void checkRights();
    void readLights();
    bool send(Role role, const Events &events);
    int write(Role role, const Events &events);

    UinputKernel &m_kernel;
    const QString m_path;
    std::unique_ptr<PathWatch> m_rights; // once open() has succeeded
    std::unique_ptr<QSocketNotifier> m_lights;
    std::array<int, Roles> m_devices{-1, -1, -1};
    bool m_numLock = false;
};
