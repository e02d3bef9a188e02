#include "engine/EventDispatcher.h"

#include "engine/EngineLog.h"
#include "engine/InputLedger.h"
#include "engine/KnobSettings.h"
#include "engine/MidiActions.h"
#include "mapping/MappingSession.h"
#include "mapping/SpecialAction.h"

#include <QVector>

#include <algorithm>
#include <utility>

EventDispatcher::EventDispatcher(InputLedger &ledger, Pointer &pointer, MidiActions &midi,
                                 const KnobSettings &settings, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_ledger(ledger)
    , m_midi(midi)
    , m_settings(settings)
    , m_keys(ledger)
    , m_knob(m_keys, pointer, ledger, clock)
{
    connect(&m_knob, &KnobPointer::knobTouchShown, this, &EventDispatcher::knobTouchShown);
    connect(&m_knob, &KnobPointer::turning, this, &EventDispatcher::turning);
}

EventDispatcher::~EventDispatcher()
{
    releaseEverything();
}

void EventDispatcher::follow(const MappingSession &mappings)
{
    connect(&mappings, &MappingSession::replaced, this,
            [this, &mappings] { setActions(mappings.actions()); });
    connect(&mappings, &MappingSession::assigned, this, [this, &mappings](int control, Layer layer) {
        setAction(control, layer, mappings.action(control, layer));
    });
    setActions(mappings.actions());
}

void EventDispatcher::setActions(const ActionTable &actions)
{
    m_actions = actions;
    prepareKeys();
}

void EventDispatcher::setAction(int button, Layer layer, const shortCut &action)
{
    if (ActionTable::has(button)) {
        m_actions[button][layer] = action;
        prepareKeys();
    }
}

void EventDispatcher::releaseEverything()
{
    m_ledger.releaseAll();
    m_midi.releaseHeld();
}

void EventDispatcher::onButtonpress(int button, bool pressing)
{
    if (!ActionTable::has(button)) {
        return;
    }
    const Press press{button, pressing, pressing || m_down[button]};
    m_down[button] = pressing;
    Q_EMIT buttonHeld(button, pressing);

    // A copy: what runs may change the mapping. The layer is that of this moment, on the release too.
    const shortCut action = m_actions[button][m_layer];
    DoneAction done{button,  pressing ? DoneAction::Event::Press : DoneAction::Event::Release,
                    m_layer, m_knob.mode(),
                    action,  {}};
    done.midi = runAction(action, press);

    if (!pressing && m_setsLayer[button]) {
        // In the layer that the button has set its record may say something else.
        m_setsLayer[button] = false;
        m_layer = Layer::Normal;
    }
    if (!isAnyDown()) {
        m_chord = Chord(); // a button let go in another layer has left its flag standing
    }
    releaseIfIdle();
    tell(done);
}

MidiOutcome EventDispatcher::runAction(const shortCut &action, Press press)
{
    switch (actionKind(action)) {
    case ActionKind::Special:
        runSpecialAction(specialAction(action), press);
        break;
    case ActionKind::MidiButton:
        return m_midi.sendMidi(action.channel, action.cc, action.v_on, action.v_off, action.note,
                               action.v_off_enable, press.pressing);
    case ActionKind::MidiKnob:
        if (press.setsMode) {
            makeKnobMidi(press.button);
        }
        break;
    case ActionKind::Shortcut:
        m_keys.sendShortcut(action, press.pressing);
        break;
    }
    return {};
}

void EventDispatcher::runSpecialAction(SpecialAction what, Press press)
{
    switch (what) {
    case SpecialAction::MonitorLeft:
    case SpecialAction::MonitorRight:
        if (press.pressing) {
            m_knob.jumpToScreen(what == SpecialAction::MonitorRight);
        }
        break;
    case SpecialAction::Horizontal:
        setModeFromChord(KnobMode::Horizontal, &Chord::horizontal, press);
        break;
    case SpecialAction::Vertical:
        setModeFromChord(KnobMode::Vertical, &Chord::vertical, press);
        break;
    case SpecialAction::Circular:
        setModeFromChord(KnobMode::Circular, &Chord::circular, press);
        break;
    case SpecialAction::LeftRightKeys:
        setMode(KnobMode::LeftRightKeys, press);
        break;
    case SpecialAction::UpDownKeys:
        setMode(KnobMode::UpDownKeys, press);
        break;
    case SpecialAction::Shift1:
        setLayer(Layer::Shift1, press.button, press.pressing);
        break;
    case SpecialAction::Shift2:
        setLayer(Layer::Shift2, press.button, press.pressing);
        break;
    case SpecialAction::Midi: // a button's MIDI action has its marker in key1
    case SpecialAction::Empty:
        break;
    }
}

void EventDispatcher::setMode(KnobMode mode, Press press)
{
    if (press.setsMode) {
        m_knob.setMode(mode);
    }
}

void EventDispatcher::setModeFromChord(KnobMode mode, bool Chord::*held, Press press)
{
    setMode(mode, press);
    m_chord.*held = press.pressing;
    if (!press.pressing) {
        return;
    }
    const bool wasOn = m_gameOn;
    m_gameOn = m_chord.vertical && m_chord.horizontal && m_chord.circular;
    if (m_gameOn != wasOn) {
        Q_EMIT displayControlPanel(m_gameOn ? QStringLiteral("GAME") : QStringLiteral("ZR"));
    }
}

void EventDispatcher::leaveGame()
{
    m_gameOn = false;
    Q_EMIT displayControlPanel(QStringLiteral("ZR"));
}

void EventDispatcher::setLayer(Layer layer, int button, bool pressing)
{
    m_layer = pressing ? layer : Layer::Normal; // to Normal, deliberately not to the layer before
    if (pressing) {
        m_setsLayer[button] = true;
    }
}

void EventDispatcher::makeKnobMidi(int button)
{
    m_knob.setMode(KnobMode::Midi);
    m_knobMidiLayer = m_layer;
    m_knobMidiButton = button;
    m_midi.resetKnobValue();
    qCDebug(lcEngine) << "SET KNOB as MIDI";
}

void EventDispatcher::onKnobevent(char type)
{
    if (type == 'D' && m_touch == Touch::None) {
        m_touch = m_gameOn ? Touch::Game : Touch::Desktop;
    }
    if (type == 'D' && !m_gameOn) {
        m_touchedMode = m_knob.mode();
        m_touchedMidi = knobMidiAction();
    }
    std::optional<DoneAction> done;
    if (m_gameOn) {
        Q_EMIT gameControl(type == 'U' ? 'S' : type);
    } else {
        done = runKnobEvent(type, knobMidiAction());
    }
    if (type == 'U') {
        endKnobTouch();
    }
    releaseIfIdle();
    tell(done);
}

const shortCut &EventDispatcher::knobMidiAction() const
{
    return m_actions[m_knobMidiButton][m_knobMidiLayer];
}

// Wherever the event went: the finger is off, and with it goes the drag that the touch began.
void EventDispatcher::endKnobTouch()
{
    m_touch = Touch::None;
    m_knob.endTouch();
    m_ledger.endDrag();
}

// Nothing for a step that is ignored.
std::optional<DoneAction> EventDispatcher::runKnobEvent(char type, const shortCut &midi)
{
    DoneAction done;
    done.mode = m_knob.mode();
    done.event = type == 'U'   ? DoneAction::Event::LetGo
                 : type == 'D' ? DoneAction::Event::Touch
                 : type == 'L' ? DoneAction::Event::TurnLeft
                               : DoneAction::Event::TurnRight;
    if (done.mode == KnobMode::Midi) {
        done.action = midi;
        if (actionKind(midi) == ActionKind::MidiKnob) { // or the button is something else by now
            done.midi = m_midi.knobEvent(midi, type);
        }
        return done;
    }
    switch (type) {
    case 'U':
        m_knob.letGo();
        break;
    case 'D':
        m_knob.touch();
        break;
    default:
        if (!m_knob.turn(type)) {
            return std::nullopt;
        }
        break;
    }
    return done;
}

void EventDispatcher::tell(const std::optional<DoneAction> &done)
{
    if (std::exchange(m_toldLayer, m_layer) != m_layer) {
        Q_EMIT layerChanged(m_layer);
    }
    if (std::exchange(m_toldMode, m_knob.mode()) != m_knob.mode()) {
        Q_EMIT knobModeChanged(m_knob.mode());
    }
    if (done) {
        Q_EMIT acted(*done);
    }
}

void EventDispatcher::onKnobevent(int count)
{
    constexpr float quiet = 100.0F; // the square of 10
    const auto sum = static_cast<float>(qint64(m_lastKnobValue) + count);
    if (sum * sum < quiet) {
        return;
    }
    const int value = smoothed(count / std::max(1, m_settings.sensitivity(m_layer)));
    if (m_lastKnobValue < value) {
        onKnobevent('R');
    } else if (m_lastKnobValue > value) {
        onKnobevent('L');
    }
    m_lastKnobValue = value;
}

// The median of the last four values: between the second and the third, toward zero.
int EventDispatcher::smoothed(int value)
{
    m_recentCounts[m_nextCount] = value;
    m_nextCount = (m_nextCount + 1) % m_recentCounts.size();
    auto sorted = m_recentCounts;
    std::sort(sorted.begin(), sorted.end());
    return static_cast<int>((qint64(sorted[1]) + sorted[2]) / 2);
}

void EventDispatcher::letKnobGo()
{
    m_gameOn = false; // without a signal: the page that follows is the one for a lost device
    if (m_touch == Touch::Desktop) {
        const KnobMode mode = m_knob.mode();
        m_knob.setMode(m_touchedMode);
        runKnobEvent('U', m_touchedMidi);
        m_knob.setMode(mode);
    }
    endKnobTouch();
    releaseIfIdle();
}

void EventDispatcher::onDeviceLost()
{
    letKnobGo();
    Q_EMIT turning(KnobPointer::Turn::None);
    Q_EMIT knobTouchShown(false);
}

void EventDispatcher::letEverythingGo()
{
    letKnobGo();
    for (int button = 0; button < ActionTable::controlCount; ++button) {
        if (m_down[button]) {
            onButtonpress(button, false);
        }
    }
    releaseEverything();
}

void EventDispatcher::onUserMovingMouse()
{
    m_knob.userMovesMouse();
}

void EventDispatcher::reEnableZR()
{
    m_knob.reEnable();
}

void EventDispatcher::restoreMouse()
{
    m_knob.restore();
}

bool EventDispatcher::isAnyDown() const
{
    return std::find(m_down.begin(), m_down.end(), true) != m_down.end();
}

void EventDispatcher::releaseIfIdle()
{
    if (isIdle()) {
        releaseEverything();
        Q_EMIT wentIdle();
    }
}

void EventDispatcher::prepareKeys()
{
    QVector<quint16> keys{static_cast<quint16>(ArrowKey::Left), static_cast<quint16>(ArrowKey::Up),
                          static_cast<quint16>(ArrowKey::Right), static_cast<quint16>(ArrowKey::Down)};
    for (const auto &layers : m_actions) {
        for (const shortCut &action : layers) {
            if (actionKind(action) != ActionKind::Shortcut) {
                continue;
            }
            for (const qint32 code : {action.key1, action.key2, action.key3}) {
                const auto key = static_cast<quint16>(code & 0xFFFF);
                if (code != KeySynthesis::noKey && key != 0 && !keys.contains(key)) {
                    keys.append(key);
                }
            }
        }
    }
    m_ledger.prepareKeys(keys);
}
