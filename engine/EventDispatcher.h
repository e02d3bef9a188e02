#pragma once

#include "engine/DoneAction.h"
#include "engine/KeySynthesis.h"
#include "engine/KnobPointer.h"
#include "mapping/ActionTable.h"

#include <QObject>

#include <array>
#include <optional>

class InputLedger;
class KnobSettings;
class MappingSession;
class MidiActions;
enum class SpecialAction : qint32;

/// Carries out what the mapping says for each event of the device.
///
/// The path of an event: SerialProtocol decodes a report line and calls a slot here; the control's record of
/// the current layer is looked up; KeySynthesis, KnobPointer or the MidiActions carries it out, the first two
/// through the InputLedger. All of it is done when the slot returns. Events are handled in the order of their
/// arrival, on the GUI thread; an event that means nothing is dropped without a word.
///
/// What the words of the mapping leave held (a button released in another layer than it was pressed in, a
/// mode changed under the finger) is released as soon as no button is down and the knob is let go, after the
/// event's own output.
class EventDispatcher : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(EventDispatcher)

public:
    /// The arguments must outlive this object. Starts with an empty mapping.
    EventDispatcher(InputLedger &ledger, Pointer &pointer, MidiActions &midi, const KnobSettings &settings,
                    Clock &clock, QObject *parent = nullptr);
    ~EventDispatcher() override;

    /// Does from now on what @p mappings says, until that is destroyed.
    void follow(const MappingSession &mappings);

    /// All thirty entries; they act from the next event on.
    void setActions(const ActionTable &actions);

    /// Changes one entry, from the next event on. Does nothing for a button that does not exist.
    void setAction(int button, Layer layer, const shortCut &action);

    /// Releases whatever the system holds on the engine's behalf: for quitting.
    void releaseEverything();

    Layer currentLayer() const { return m_layer; }
    KnobMode knobMode() const { return m_knob.mode(); }
    bool isGameOn() const { return m_gameOn; }

    /// Whether no button is down and nobody touches the knob.
    bool isIdle() const { return !isAnyDown() && m_touch == Touch::None; }

public Q_SLOTS:
    /// A button went down or up. Numbers outside 0 to 9 are ignored.
    void onButtonpress(int button, bool pressing);

    /// The knob: 'D' touched, 'U' let go, 'L' and 'R' one step.
    void onKnobevent(char type);

    /// A count of the knob: made slower by the sensitivity, smoothed, and turned into a step.
    void onKnobevent(int count);

    /// The device is about to be reported as gone: the knob is let go in the mode it was touched in, before
    /// the releases of the buttons can change that mode.
    void letKnobGo();

    /// The device is gone, after its buttons have been reported as released. Lets the knob go where
    /// letKnobGo() has not been called.
    void onDeviceLost();

    /// The program ends while the device may be in use: the knob and the buttons that are down are let go, as
    /// the loss of the device would do, with what a MIDI action sends on its release. Then whatever the
    /// system still holds on the engine's behalf is released.
    void letEverythingGo();

    /// Ends the game as its chord would.
    void leaveGame();

    void onUserMovingMouse();
    void reEnableZR();
    void restoreMouse();

Q_SIGNALS:
    void displayControlPanel(QString name); ///< "GAME" or "ZR": the page that the buttons call up
    void gameControl(char control);         ///< 'L', 'R', 'D' or 'S' (let go), while the game is on

    void buttonHeld(int button, bool held);
    void knobTouchShown(bool shown);
    void turning(KnobPointer::Turn turn);

    /// @name Told once the event has been carried out to its last key, so that nothing waits for who shows
    /// it.
    /// @{
    void layerChanged(Layer layer);
    void knobModeChanged(KnobMode mode);
    void acted(const DoneAction &done); ///< not while the game is on, and not for a step that was ignored
    /// @}

    /// An event has been carried out, and after it isIdle(): all that it left held is released.
    void wentIdle();

private:
    enum class Touch { None, Desktop, Game };

    // The buttons of the game's chord that are held.
    struct Chord {
        bool vertical = false;
        bool horizontal = false;
        bool circular = false;
    };

    // What became of a button. A release of a button that is not down comes from no finger (the loss of the
    // device releases all ten): it sets no mode.
    struct Press {
        int button;
        bool pressing;
        bool setsMode;
    };

    MidiOutcome runAction(const shortCut &action, Press press);
    void runSpecialAction(SpecialAction what, Press press);
    void setModeFromChord(KnobMode mode, bool Chord::*held, Press press);
    void setMode(KnobMode mode, Press press);
    void setLayer(Layer layer, int button, bool pressing);
    void makeKnobMidi(int button);
    const shortCut &knobMidiAction() const;
    std::optional<DoneAction> runKnobEvent(char type, const shortCut &midi);
    void tell(const std::optional<DoneAction> &done);
    void endKnobTouch();
    int smoothed(int value);
    bool isAnyDown() const;
    void releaseIfIdle();
    void prepareKeys();

    InputLedger &m_ledger;
    MidiActions &m_midi;
    const KnobSettings &m_settings;
    KeySynthesis m_keys;
    KnobPointer m_knob;

    ActionTable m_actions;
    Layer m_layer = Layer::Normal;
    Layer m_toldLayer = Layer::Normal;
    KnobMode m_toldMode = KnobMode::Circular;
    PerControl<bool> m_down;
    PerControl<bool> m_setsLayer;                // pressed as "shift 1" or "shift 2", not yet let go
    Touch m_touch = Touch::None;                 // whom the finger on the knob was meant for
    KnobMode m_touchedMode = KnobMode::Circular; // the knob's mode and MIDI record at its last touch
    shortCut m_touchedMidi;
    Chord m_chord;
    bool m_gameOn = false;
    Layer m_knobMidiLayer = Layer::Normal;
    int m_knobMidiButton = 0;
    int m_lastKnobValue = 0;
    std::array<int, 4> m_recentCounts{};
    std::size_t m_nextCount = 0;
};
