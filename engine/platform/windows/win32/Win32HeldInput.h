#pragma once

#include <array>
#include <atomic>
#include <cstdint>

/// What the system would go on holding if the program were ended now: keys, the left button, the transparent
/// arrow. It stands in memory that is shared with another process: it consists of lock-free words, and any
/// moment's state is a valid one. All zero means that nothing is held.
class Win32HeldInput
{
public:
    static constexpr unsigned keyCount = 256;

    Win32HeldInput() = default;
    Win32HeldInput(const Win32HeldInput &) = delete;
    Win32HeldInput &operator=(const Win32HeldInput &) = delete;

    /// To be called before the press and after the release are sent. A code that is no virtual key's is
    /// ignored, as the system does.
    void setKey(std::uint16_t virtualKey, bool held)
    {
        if (virtualKey >= keyCount) {
            return;
        }
        const std::uint32_t bit = 1U << (virtualKey % 32U);
        std::atomic<std::uint32_t> &word = m_keys[virtualKey / 32U];
        held ? word.fetch_or(bit) : word.fetch_and(~bit);
    }
    bool key(std::uint16_t virtualKey) const
    {
        return virtualKey < keyCount && (m_keys[virtualKey / 32U] & (1U << (virtualKey % 32U))) != 0;
    }

    void setLeftButton(bool held) { m_leftButton = held ? 1 : 0; }
    bool leftButton() const { return m_leftButton != 0; }

    /// To be called before the arrow is made transparent and after it was put back.
    void setArrowHidden(bool hidden) { m_arrowHidden = hidden ? 1 : 0; }
    bool arrowHidden() const { return m_arrowHidden != 0; }

private:
    std::array<std::atomic<std::uint32_t>, keyCount / 32> m_keys{};
    std::atomic<std::uint32_t> m_leftButton{0};
    std::atomic<std::uint32_t> m_arrowHidden{0};
};

static_assert(std::atomic<std::uint32_t>::is_always_lock_free, "shared between processes");
