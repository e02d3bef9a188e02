#pragma once

#include "engine/platform/uinput/UinputKernel.h"

#include <map>
#include <memory>

struct libevdev_uinput;

/// The real thing: libevdev on /dev/uinput. Devices go with this object, and with the process however it
/// ends.
class LibEvdev final : public UinputKernel
{
    Q_DISABLE_COPY_MOVE(LibEvdev)

public:
    /// Where the kernel's side is.
    static constexpr char path[] = "/dev/uinput";

    LibEvdev() = default;
    ~LibEvdev() override = default;

    int create(const DeviceDescription &description) override;
    void destroy(int device) override;
    int write(int device, quint16 type, quint16 code, qint32 value) override;
    int descriptor(int device) const override { return device; }
    bool read(int device, Event &event) override;

    /// The path of the device's own node under /dev/input; empty while udev has not made it.
    QByteArray node(int device) const;

private:
    struct Device {
        explicit Device(int file)
            : descriptor(file)
        {
        }
        ~Device();
        Q_DISABLE_COPY_MOVE(Device)

        int descriptor;
        libevdev_uinput *uinput = nullptr;
    };

    std::map<int, std::unique_ptr<Device>> m_devices; // by file descriptor
};
