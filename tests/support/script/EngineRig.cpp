#include "tests/support/script/EngineRig.h"

EngineRig::EngineRig(QPoint pointerAt)
{
    midiPort.openPort(0);
    pointer.place(pointerAt);
    dispatcher = std::make_unique<EventDispatcher>(ledger, pointer, midi, settings, clock);
    QObject::connect(dispatcher.get(), &EventDispatcher::displayControlPanel, dispatcher.get(),
                     [this](const QString &name) { recorder.recordPanel(name); });
    QObject::connect(dispatcher.get(), &EventDispatcher::gameControl, dispatcher.get(),
                     [this](char control) { recorder.recordGame(control); });
}

QStringList EngineRig::run(const Script &script)
{
    QPoint start;
    for (const ScriptStep &step : script.setUp) {
        if (step.kind == ScriptStep::Kind::At) {
            start = step.point;
        }
    }
    EngineRig rig(start);
    for (const ScriptStep &step : script.setUp) {
        rig.run(step);
    }
    for (const ScriptStep &step : script.events) {
        rig.run(step);
    }
    return rig.recorder.takeLines();
}

void EngineRig::run(const ScriptStep &step)
{
    using Kind = ScriptStep::Kind;
    switch (step.kind) {
    case Kind::Assign:
    case Kind::Remap:
        dispatcher->setAction(step.button, step.layer, step.action);
        break;
    case Kind::Screens:
        pointer.setScreens(step.screens);
        break;
    case Kind::At:
        pointer.place(step.point);
        break;
    case Kind::Sensitivity:
        settings.setKnobSensitivityNormal(step.number);
        settings.setKnobSensitivityShift1(step.number2);
        break;
    case Kind::Wait:
        clock.advance(step.number);
        break;
    case Kind::Mouse:
        pointer.place(step.point);
        dispatcher->onUserMovingMouse();
        break;
    case Kind::Plug:
        m_plugged = true;
        m_decoder.clear();
        break;
    case Kind::Unplug:
        unplug();
        break;
    case Kind::Button:
        take(DeviceEvent::buttonChanged(step.button, step.pressing));
        break;
    case Kind::KnobType:
        take(DeviceEvent::knobChanged(step.type));
        break;
    case Kind::KnobCount:
        take(DeviceEvent::knobCounted(step.number));
        break;
    case Kind::Raw:
        m_decoder.append(step.bytes);
        while (const auto event = m_decoder.next()) {
            take(*event);
        }
        break;
    }
}

void EngineRig::take(const DeviceEvent &event)
{
    if (!m_plugged) {
        return;
    }
    switch (event.kind) {
    case DeviceEvent::Kind::Button:
        dispatcher->onButtonpress(event.button, event.pressing);
        break;
    case DeviceEvent::Kind::KnobType:
        dispatcher->onKnobevent(event.type);
        break;
    case DeviceEvent::Kind::KnobCount:
        dispatcher->onKnobevent(event.count);
        break;
    }
}

void EngineRig::unplug()
{
    if (!m_plugged) {
        return;
    }
    m_plugged = false;
    dispatcher->letKnobGo();
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        dispatcher->onButtonpress(button, false);
    }
    dispatcher->onDeviceLost();
}
