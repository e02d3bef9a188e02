#pragma once

#include <QObject>

#include <array>

namespace simulator
{

class DevicePort;

/// The device: ten buttons, a knob and a cable. Every change of a control is reported through the port in the
/// wire format; while the cable is out, the controls still move and nobody hears of it.
class VirtualDevice : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(VirtualDevice)

public:
    static constexpr int buttonCount = 10;

    /// @p port must outlive this object.
    explicit VirtualDevice(DevicePort &port, QObject *parent = nullptr);

    bool isPlugged() const;
    bool isOpened() const;
    bool isDelivered() const;
    bool isDown(int button) const { return m_down.at(static_cast<size_t>(button)); }
    bool isTouched() const { return m_touched; }

    /// How many steps the knob has been turned to the right since the start, less those to the left.
    int knobPosition() const { return m_position; }

    /// Reports a press or release, also when the button is down or up already.
    void setButton(int button, bool down);

    /// Reports a knob event; see wire::knob().
    void sendKnob(char type);

    void sendCount(int value);
    void sendRaw(const QByteArray &bytes);

    /// Puts the cable in or out. Returns false when the port cannot be made.
    bool setPlugged(bool plugged);

    /// To be told when a program opens or closes the port.
    void portStateChanged() { Q_EMIT changed(); }

Q_SIGNALS:
    /// Anything that can be seen has changed.
    void changed();

    /// @p message went out (or, with the cable out, would have gone).
    void reported(const QByteArray &message);

private:
    void send(const QByteArray &message);

    DevicePort &m_port;
    std::array<bool, buttonCount> m_down{};
    bool m_touched = false;
    int m_position = 0;
};

} // namespace simulator
