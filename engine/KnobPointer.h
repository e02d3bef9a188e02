#pragma once

#include "engine/KnobMode.h"

#include <QObject>
#include <QPoint>

#include <chrono>

class Clock;
class KeySynthesis;
class Pointer;
class PointerAppearance;

/// The knob as a hand on the mouse: a touch is a left-button drag with the pointer hidden, a turn moves the
/// pointer by one pixel or taps an arrow key (see KnobMode). It rests while the user moves the real mouse.
class KnobPointer : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(KnobPointer)

public:
    enum class Turn { None, Left, Right };
    Q_ENUM(Turn)

    static constexpr int mousePause = 250; ///< ms without mouse movement until the knob acts again
    static constexpr int returnPointPause =
        1000; ///< ms from letting go until a touch notes a new return point

    /// The arguments must outlive this object. The return point is where the pointer is now.
    KnobPointer(KeySynthesis &keys, Pointer &pointer, PointerAppearance &appearance, Clock &clock,
                QObject *parent = nullptr);

    KnobMode mode() const { return m_mode; }
    void setMode(KnobMode mode) { m_mode = mode; }

    void touch();
    void letGo();

    /// The touch is over without the steps of letGo(): the knob was let go in the game or in MIDI mode.
    void endTouch();

    /// One step: 'L' or 'R'; 'S' clears the turn indicators, and any other character does nothing. Ignored
    /// while the knob is not touched and while the user moves the mouse.
    /// Returns whether a step was carried out.
    bool turn(char direction);

    /// Moves the pointer to the next screen ("monitor left") or to the previous one (@p right, "monitor
    /// right"), to the same place from its top left corner, or to the middle where it is too small for that.
    /// The pairing of names and directions is intended.
    void jumpToScreen(bool right);

    /// The user moved the real mouse: interrupts the drag, and reEnable() follows when the mouse has rested.
    /// In circular mode the pointer goes back to the return point first, but only while the knob is touched:
    /// a hand alone, or a jump to another screen, is never undone.
    void userMovesMouse();

    /// The mouse rests: the drag of a knob that is still touched goes on, from here.
    void reEnable();

    /// Puts the system's pointer back, for the end of the program.
    void restore();

Q_SIGNALS:
    void knobTouchShown(bool shown);
    void turning(KnobPointer::Turn turn);

private:
    void setPointerHidden(bool hide);
    void movePointerBy(int dx, int dy);
    void noteReturnPoint();
    void waitForMouseRest(std::chrono::milliseconds time);

    KeySynthesis &m_keys;
    Pointer &m_pointer;
    PointerAppearance &m_appearance;
    Clock &m_clock;

    KnobMode m_mode = KnobMode::Circular;
    bool m_touched = false;
    bool m_hidden = false; // what the steps here last asked for; the ledger knows what is so
    bool m_userMovesMouse = false;
    bool m_returnPointMayChange = true;
    QPoint m_returnPoint;
    bool m_jumped = false; // to another screen, since the return point was noted
    std::chrono::nanoseconds m_mouseRestsAt{0};
    bool m_waitsForMouseRest = false;
};
