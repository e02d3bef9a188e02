#pragma once

#include <array>
#include <cstddef>

/// One value for each of the device's ten controls.
template <typename Value>
struct PerControl {
    static constexpr int count = 10;

    std::array<Value, count> values{};

    /// @p control is 0 to 9.
    constexpr Value &operator[](int control) { return values[static_cast<std::size_t>(control)]; }
    constexpr const Value &operator[](int control) const { return values[static_cast<std::size_t>(control)]; }

    auto begin() { return values.begin(); }
    auto end() { return values.end(); }
    auto begin() const { return values.begin(); }
    auto end() const { return values.end(); }

    friend bool operator==(const PerControl &a, const PerControl &b) { return a.values == b.values; }
    friend bool operator!=(const PerControl &a, const PerControl &b) { return !(a == b); }
};
