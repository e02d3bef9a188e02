#include "ui/ComboMenuSettings.h"

#include "engine/Settings.h"
#include "mapping/SpecialAction.h"
#include "ui/ActionKeys.h"

#include <QLatin1String>

namespace
{

// What older versions stored as the first key of a special action and of a button's MIDI action.
constexpr int oldSpecialAction = 17;
constexpr int oldMidiAction = 20;

} // namespace

ActionTable ComboMenuSettings::readAll(Settings &settings)
{
    ActionTable stored;
    for (int control = 0; control < ActionTable::controlCount; ++control) {
        for (const Layer layer : Layers::all) {
            stored[control][layer] = ComboMenuSettings(settings, control).read(layer);
        }
    }
    return stored;
}

ComboMenuSettings::ComboMenuSettings(Settings &settings, int control)
    : m_settings(settings)
    , m_control(control)
{
}

QString ComboMenuSettings::key(Layer layer, const char *field) const
{
    return key(layer, QString(QLatin1String(field)));
}

QString ComboMenuSettings::key(Layer layer, const QString &field) const
{
    return ActionKeys::key(m_control, layer, field);
}

void ComboMenuSettings::upgrade()
{
    for (const Layer layer : Layers::all) {
        const QString first = key(layer, "key1");
        const int key1 = m_settings.value(first).toInt();
        if (key1 == oldSpecialAction) {
            m_settings.setValue(first, SPECIAL_ACTION);
        } else if (key1 == oldMidiAction) {
            m_settings.setValue(first, MIDI_BUTTON_ACTION);
        } else if (m_settings.value(key(layer, "label")).toString() == QLatin1String("Midi")) {
            // Only what is a special action too: a shortcut may carry any label.
            const int code = m_settings.value(key(layer, "key2")).toInt();
            if (key1 == SPECIAL_ACTION && code == static_cast<int>(SpecialAction::Midi)) {
                m_settings.setValue(first, MIDI_BUTTON_ACTION);
            }
        }
    }
}

shortCut ComboMenuSettings::read(Layer layer) const
{
    const shortCut unset;
    const auto number = [&](const QString &field, qint32 otherwise) {
        return m_settings.value(key(layer, field), otherwise).toInt();
    };
    const auto flag = [&](const char *field, bool otherwise) {
        return m_settings.value(key(layer, field), otherwise).toBool();
    };
    shortCut action;
    action.key1 = number(QStringLiteral("key1"), unset.key1);
    action.key2 = number(QStringLiteral("key2"), unset.key2);
    action.key3 = number(QStringLiteral("key3"), unset.key3);
    action.label = m_settings.value(key(layer, "label"), unset.label).toString();
    action.channel = number(QStringLiteral("channel"), unset.channel);
    action.cc = number(QStringLiteral("cc"), unset.cc);
    // Shift 2 reads its values under other names than it writes them, on purpose.
    action.v_on = number(ActionKeys::pressValueField(layer, ActionKeys::Purpose::Reading), unset.v_on);
    action.v_off = number(ActionKeys::releaseValueField(layer, ActionKeys::Purpose::Reading), unset.v_off);
    action.note = flag("note", unset.note);
    action.v_off_enable = flag("after_touch_on", unset.v_off_enable);
    action.knobcc = number(QStringLiteral("knobcc"), unset.knobcc);
    action.m01h = flag("m01h", unset.m01h);
    action.m3fh = flag("m3fh", unset.m3fh);
    action.m0_127 = flag("m0_127", unset.m0_127);
    return action;
}

void ComboMenuSettings::write(Layer layer, const shortCut &action)
{
    writeKeys(layer, action);
    m_settings.setValue(key(layer, "channel"), action.channel);
    m_settings.setValue(key(layer, "cc"), action.cc);
    m_settings.setValue(key(layer, ActionKeys::pressValueField(layer, ActionKeys::Purpose::Writing)),
                        action.v_on);
    m_settings.setValue(key(layer, ActionKeys::releaseValueField(layer, ActionKeys::Purpose::Writing)),
                        action.v_off);
    m_settings.setValue(key(layer, "note"), action.note);
    m_settings.setValue(key(layer, "after_touch_on"), action.v_off_enable);
    m_settings.setValue(key(layer, "knobcc"), action.knobcc);
    m_settings.setValue(key(layer, "m01h"), action.m01h);
    m_settings.setValue(key(layer, "m3fh"), action.m3fh);
    m_settings.setValue(key(layer, "m0_127"), action.m0_127);
}

void ComboMenuSettings::writeKeys(Layer layer, const shortCut &action)
{
    m_settings.setValue(key(layer, "key1"), action.key1);
    m_settings.setValue(key(layer, "key2"), action.key2);
    m_settings.setValue(key(layer, "key3"), action.key3);
    m_settings.setValue(key(layer, "label"), action.label);
}
