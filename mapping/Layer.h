#pragma once

#include <QMetaType>
#include <QString>

#include <array>
#include <cstddef>
#include <optional>

/// What a control does depends on the layer that is held at the moment.
enum class Layer { Normal, Shift1, Shift2 };

/// The layers' numbers and names, in each notation.
namespace Layers
{

constexpr int count = 3;

/// In their order, everywhere.
constexpr std::array<Layer, count> all{Layer::Normal, Layer::Shift1, Layer::Shift2};

/// 0 to 2, as dialogs and log lines carry a layer.
constexpr int number(Layer layer)
{
    return static_cast<int>(layer);
}

/// Nothing for a number that is no layer's.
std::optional<Layer> fromNumber(int number);

/// "NORMAL", "SHIFT1", "SHIFT2": an element's name in mapping files.
QString fileName(Layer layer);

/// The layer of such a name, compared case-sensitively.
std::optional<Layer> fromFileName(const QString &name);

/// "Normal", "Shift1", "Shift2": a part of a key in the user's settings.
QString settingsName(Layer layer);

/// "Normal", "Shift 1", "Shift 2" in the user's language.
QString shownName(Layer layer);

} // namespace Layers

/// One value for each layer.
template <typename Value>
class PerLayer
{
public:
    constexpr Value &operator[](Layer layer) { return m_values[static_cast<std::size_t>(layer)]; }
    constexpr const Value &operator[](Layer layer) const { return m_values[static_cast<std::size_t>(layer)]; }

    auto begin() { return m_values.begin(); }
    auto end() { return m_values.end(); }
    auto begin() const { return m_values.begin(); }
    auto end() const { return m_values.end(); }

    friend bool operator==(const PerLayer &a, const PerLayer &b) { return a.m_values == b.m_values; }
    friend bool operator!=(const PerLayer &a, const PerLayer &b) { return !(a == b); }

private:
    std::array<Value, Layers::count> m_values{};
};

Q_DECLARE_METATYPE(Layer)
