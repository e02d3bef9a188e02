#pragma once

#include "mapping/Layer.h"
#include "mapping/PerControl.h"
#include "mapping/ShortCut.h"

#include <QSharedData>
#include <QSharedDataPointer>

/// What each of the ten controls does in each of the three layers: a plain value, `table[control][layer]`.
///
/// Copies share what they hold until one is changed: a file may bring a hundred thousand tables that say
/// nothing, and every step that can be taken back is one.
class ActionTable
{
public:
    static constexpr int controlCount = PerControl<PerLayer<shortCut>>::count;

    /// Whether there is such a control: 0 to 9.
    static constexpr bool has(int control) { return control >= 0 && control < controlCount; }

    /// @p control is 0 to 9.
    PerLayer<shortCut> &operator[](int control) { return m_controls->all[control]; }
    const PerLayer<shortCut> &operator[](int control) const { return m_controls->all[control]; }

    auto begin() const { return m_controls->all.begin(); }
    auto end() const { return m_controls->all.end(); }

    friend bool operator==(const ActionTable &a, const ActionTable &b)
    {
        return a.m_controls == b.m_controls || a.m_controls->all == b.m_controls->all;
    }
    friend bool operator!=(const ActionTable &a, const ActionTable &b) { return !(a == b); }

private:
    struct Controls : QSharedData {
        PerControl<PerLayer<shortCut>> all;
    };
    using Shared = QSharedDataPointer<Controls>;

    static const Shared &nothing()
    {
        static const Shared table(new Controls);
        return table;
    }

    Shared m_controls = nothing();
};
