#include "mapping/Layer.h"

#include <QCoreApplication>
#include <QLatin1String>

namespace
{

struct Names {
    const char *file;
    const char *settings;
    const char *shown;
};

// The only place where a layer is called by a name.
constexpr std::array<Names, Layers::count> names{{
    {"NORMAL", "Normal", QT_TRANSLATE_NOOP("Layer", "Normal")},
    {"SHIFT1", "Shift1", QT_TRANSLATE_NOOP("Layer", "Shift 1")},
    {"SHIFT2", "Shift2", QT_TRANSLATE_NOOP("Layer", "Shift 2")},
}};

const Names &namesOf(Layer layer)
{
    return names.at(static_cast<std::size_t>(layer));
}

} // namespace

std::optional<Layer> Layers::fromNumber(int number)
{
    return number >= 0 && number < count ? std::optional(static_cast<Layer>(number)) : std::nullopt;
}

QString Layers::fileName(Layer layer)
{
    return QLatin1String(namesOf(layer).file);
}

std::optional<Layer> Layers::fromFileName(const QString &name)
{
    for (const Layer layer : all) {
        if (name == QLatin1String(namesOf(layer).file)) {
            return layer;
        }
    }
    return std::nullopt;
}

QString Layers::settingsName(Layer layer)
{
    return QLatin1String(namesOf(layer).settings);
}

QString Layers::shownName(Layer layer)
{
    return QCoreApplication::translate("Layer", namesOf(layer).shown);
}
