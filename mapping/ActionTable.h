#pragma once

#include "mapping/Layer.h"
#include "mapping/ShortCut.h"

#include <array>
#include <cstddef>

/// What each of the ten controls does in each of the three layers: a plain value, `table[control][layer]`.
class ActionTable
{
public:
    static constexpr int controlCount = 10;

    /// Whether there is such a control: 0 to 9.
    static constexpr bool has(int control) { return control >= 0 && control < controlCount; }

    /// @p control is 0 to 9.
    PerLayer<shortCut> &operator[](int control) { return m_controls[static_cast<std::size_t>(control)]; }
    const PerLayer<shortCut> &operator[](int control) const
    {
        return m_controls[static_cast<std::size_t>(control)];
    }

    auto begin() const { return m_controls.begin(); }
    auto end() const { return m_controls.end(); }

    friend bool operator==(const ActionTable &a, const ActionTable &b)
    {
        return a.m_controls == b.m_controls;
    }
    friend bool operator!=(const ActionTable &a, const ActionTable &b) { return !(a == b); }

private:
    std::array<PerLayer<shortCut>, controlCount> m_controls;
};
