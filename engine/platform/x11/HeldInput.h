#pragma once

#include <QtGlobal>

#include <array>
#include <atomic>
#include <cstring>

/// What the X server would go on holding if the program were killed now. It can stand in memory that is
/// shared with another process: it consists of lock-free words, and any moment's state is a valid one.
class HeldInput
{
    Q_DISABLE_COPY_MOVE(HeldInput)

public:
    HeldInput() = default;

    /// The display that all of this is about; the name is cut at 255 bytes. To be set before anything else.
    void setDisplay(const char *name) { std::strncpy(m_display.data(), name, m_display.size() - 1); }
    const char *display() const { return m_display.data(); }

    /// To be called before the press and after the release are sent.
    void setKey(quint8 keycode, bool held)
    {
        const quint32 bit = 1U << (keycode % 32U);
        std::atomic<quint32> &word = m_keys[keycode / 32U];
        word = held ? word | bit : word & ~bit;
    }
    bool key(quint8 keycode) const { return m_keys[keycode / 32U] & (1U << (keycode % 32U)); }

    void setLeftButton(bool held) { m_leftButton = held; }
    bool leftButton() const { return m_leftButton; }

    /// The symbol that was put on a keycode which was free before; 0 for none.
    void setSpare(quint8 keycode, quint32 keysym) { m_spares[keycode] = keysym; }
    quint32 spare(quint8 keycode) const { return m_spares[keycode]; }

    bool isEmpty() const
    {
        bool empty = !m_leftButton;
        for (const std::atomic<quint32> &word : m_keys) {
            empty = empty && word == 0;
        }
        for (const std::atomic<quint32> &keysym : m_spares) {
            empty = empty && keysym == 0;
        }
        return empty;
    }

private:
    std::array<std::atomic<quint32>, 8> m_keys{};
    std::array<std::atomic<quint32>, 256> m_spares{};
    std::atomic<bool> m_leftButton{false};
    std::array<char, 256> m_display{};
};
