// Feeds the virtual device's parser arbitrary scripts. Every line is a step, nothing, or a mistake that is
// told with its number; a step is within its bounds, is read the same from its own text, and what it sends is
// one message to the program.

#include "device/LineDecoder.h"
#include "tools/simulator/ScriptParser.h"
#include "tools/simulator/WireEncoder.h"

#include <QLoggingCategory>

#include <cstdint>
#include <cstdlib>
#include <optional>

using simulator::Script;
using simulator::ScriptStep;

namespace
{

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

std::optional<QByteArray> messageOf(const ScriptStep &step)
{
    switch (step.kind) {
    case ScriptStep::Kind::Button:
        require(step.number >= 0 && step.number <= 9);
        return simulator::wire::button(step.number, step.down);
    case ScriptStep::Kind::Knob:
        return simulator::wire::knob(step.type);
    case ScriptStep::Kind::Count:
        return simulator::wire::count(step.number);
    case ScriptStep::Kind::Raw:
        require(!step.bytes.isEmpty());
        return std::nullopt;
    case ScriptStep::Kind::Wait:
        require(step.number >= 0 && step.number <= 3'600'000);
        return std::nullopt;
    case ScriptStep::Kind::Plug:
    case ScriptStep::Kind::Unplug:
        return std::nullopt;
    }
    std::abort();
}

void check(const ScriptStep &step)
{
    const auto parsed = simulator::scriptparser::parseLine(step.source);
    const auto *again = std::get_if<ScriptStep>(&parsed);
    require(again && again->kind == step.kind && again->number == step.number && again->down == step.down &&
            again->type == step.type && again->bytes == step.bytes && again->source == step.source);
    if (const auto message = messageOf(step)) {
        LineDecoder decoder;
        decoder.append(*message);
        require(decoder.next().has_value());
        require(!decoder.next());
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const Script script = simulator::scriptparser::parse(text);
    const int lines = text.count('\n') + 1;
    require(script.steps.size() + script.mistakes.size() <= lines);
    int last = 0;
    for (const auto &mistake : script.mistakes) {
        require(mistake.line > last && mistake.line <= lines && !mistake.message.isEmpty());
        last = mistake.line;
    }
    for (const ScriptStep &step : script.steps) {
        check(step);
    }
    return 0;
}
