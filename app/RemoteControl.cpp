#include "app/RemoteControl.h"

#include "app/AppLog.h"
#include "app/HistoryCommands.h"
#include "app/Logging.h"
#include "engine/EventDispatcher.h"
#include "mapping/MappingSession.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <utility>

namespace
{

struct ModeNames {
    const char *forPrograms;
    const char *shown;
};

ModeNames namesOf(KnobMode mode)
{
    switch (mode) {
    case KnobMode::Circular:
        return {"circular", QT_TRANSLATE_NOOP("RemoteControl", "circular")};
    case KnobMode::Vertical:
        return {"vertical", QT_TRANSLATE_NOOP("RemoteControl", "vertical")};
    case KnobMode::Horizontal:
        return {"horizontal", QT_TRANSLATE_NOOP("RemoteControl", "horizontal")};
    case KnobMode::UpDownKeys:
        return {"up-down-keys", QT_TRANSLATE_NOOP("RemoteControl", "up and down keys")};
    case KnobMode::LeftRightKeys:
        return {"left-right-keys", QT_TRANSLATE_NOOP("RemoteControl", "left and right keys")};
    case KnobMode::Midi:
        break;
    }
    return {"midi", QT_TRANSLATE_NOOP("RemoteControl", "MIDI")};
}

const ZRButtonMap *named(const QString &name, const QList<ZRButtonMap *> &maps)
{
    const auto found =
        std::find_if(maps.begin(), maps.end(), [&name](const ZRButtonMap *map) { return map->name == name; });
    return found == maps.end() ? nullptr : *found;
}

template <typename Json>
QString compact(const Json &json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

} // namespace

RemoteControl::RemoteControl(Parts parts)
    : m_parts(std::move(parts))
{
}

RemoteAnswer RemoteControl::answer(const RemoteRequest &request) const
{
    struct Row {
        const char *command;
        int arguments;
        RemoteAnswer (RemoteControl::*run)(const RemoteRequest &) const;
    };
    static constexpr std::array rows{
        Row{"use", 1, &RemoteControl::use},           Row{"list", 0, &RemoteControl::list},
        Row{"show", 0, &RemoteControl::show},         Row{"status", 0, &RemoteControl::status},
        Row{"verbose", 0, &RemoteControl::verbose},   Row{"restore", 1, &RemoteControl::restore},
        Row{"import", 1, &RemoteControl::importFile},
    };
    const auto row = std::find_if(rows.begin(), rows.end(), [&request](const Row &each) {
        return request.command == QLatin1String(each.command);
    });
    if (row == rows.end()) {
        return {2, tr("The running Veltrix does not know the command %1.").arg(request.command)};
    }
    if (request.arguments.size() != row->arguments) {
        return {2, tr("The command %1 has other arguments.").arg(request.command)};
    }
    qCInfo(lcApp).noquote() << "remote control:" << request.command;
    return (this->*row->run)(request);
}

RemoteAnswer RemoteControl::use(const RemoteRequest &request) const
{
    const QString &name = request.arguments.constFirst();
    const ZRButtonMap *map = named(name, m_parts.mappings->custom());
    if (map == nullptr) {
        map = named(name, m_parts.mappings->library());
    }
    if (map == nullptr) {
        return {1, tr("There is no mapping \u201c%1\u201d.").arg(name)};
    }
    m_parts.mappings->use(*map);
    return {};
}

RemoteAnswer RemoteControl::list(const RemoteRequest &request) const
{
    QStringList lines;
    QJsonArray entries;
    for (const bool custom : {true, false}) {
        for (const ZRButtonMap *map : custom ? m_parts.mappings->custom() : m_parts.mappings->library()) {
            lines.append(map->name);
            entries.append(
                QJsonObject{{QStringLiteral("name"), map->name}, {QStringLiteral("custom"), custom}});
        }
    }
    return {0, request.json ? compact(entries) : lines.join(QLatin1Char('\n'))};
}

RemoteAnswer RemoteControl::importFile(const RemoteRequest &request) const
{
    const ImportedMappings::Outcome outcome = m_parts.mappings->importFile(request.arguments.constFirst());
    return {outcome.names.isEmpty() ? 1 : 0, outcome.sentence};
}

RemoteAnswer RemoteControl::show(const RemoteRequest &) const
{
    m_parts.show();
    return {};
}

RemoteAnswer RemoteControl::status(const RemoteRequest &request) const
{
    const bool connected = m_parts.isConnected();
    const QString &mapping = m_parts.mappings->name();
    const Layer layer = m_parts.dispatcher->currentLayer();
    const ModeNames mode = namesOf(m_parts.dispatcher->knobMode());
    if (request.json) {
        return {0, compact(QJsonObject{
                       {QStringLiteral("connected"), connected},
                       {QStringLiteral("mapping"), mapping.isEmpty() ? QJsonValue() : QJsonValue(mapping)},
                       {QStringLiteral("layer"), Layers::settingsName(layer)},
                       {QStringLiteral("mode"), QLatin1String(mode.forPrograms)},
                   })};
    }
    const QStringList lines{
        tr("device: %1").arg(connected ? tr("connected") : tr("not connected")),
        tr("mapping: %1").arg(mapping.isEmpty() ? tr("the last one kept") : mapping),
        tr("layer: %1").arg(Layers::shownName(layer)),
        tr("knob mode: %1").arg(tr(mode.shown)),
    };
    return {0, lines.join(QLatin1Char('\n'))};
}

RemoteAnswer RemoteControl::restore(const RemoteRequest &request) const
{
    const QString &version = request.arguments.constFirst();
    return HistoryCommands::answerTo(version, m_parts.mappings->restore(version));
}

RemoteAnswer RemoteControl::verbose(const RemoteRequest &) const
{
    Logging::addEvents();
    return {};
}
