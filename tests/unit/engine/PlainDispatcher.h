#pragma once

#include "mapping/ShortCut.h"

#include <QPoint>
#include <QRect>
#include <QStringList>
#include <QVector>

/// What the device's events mean, written down a second time and as plainly as possible: one function per
/// event, no ledger, no signals, output as text lines. The random test compares the engine with it.
class PlainDispatcher
{
public:
    shortCut actions[10][3];
    QVector<QRect> screens;
    QPoint pointer;
    int sensitivityNormal = 1;
    int sensitivityShift1 = 1;

    explicit PlainDispatcher(QPoint pointerAt);

    void button(int button, bool pressing);
    void knob(char type);
    void count(int count);
    void letKnobGo();
    void mouseMoved(QPoint to);
    void advance(int milliseconds);

    QStringList takeLines();

private:
    void special(int code, int button, bool pressing, bool wasDown);
    void checkChord(bool pressing);
    void sendKey(qint32 code, bool down);
    void tap(int code);
    void moveTo(qint64 x, qint64 y);
    void setPointerHidden(bool hide);
    void step(char direction);
    void jump(bool right);
    void setMode(int mode, bool pressing, bool wasDown);
    void midiKnob(char type, const shortCut &a);
    void sendMidi(const shortCut &a, bool pressing);
    void reEnable();
    void forgetChordWithoutButtons();

    QStringList m_lines;
    qint64 m_now = 0;
    qint64 m_reEnableAt = -1;
    QVector<qint64> m_restorePointAt;

    int m_layer = 0;
    int m_mode = 0;
    bool m_down[10] = {};
    bool m_setLayer[10] = {};
    bool m_vertical = false, m_horizontal = false, m_circular = false;
    bool m_game = false;
    bool m_finger = false, m_fingerForGame = false;
    int m_touchedMode = 0;
    shortCut m_touchedMidi;
    bool m_touched = false, m_hidden = false, m_jumped = false, m_userMoves = false,
         m_restorePointValid = true;
    QPoint m_saved;
    int m_midiButton = 0, m_midiLayer = 0, m_midiValue = 0;
    int m_last = 0;
    QVector<int> m_ring{0, 0, 0, 0};
};
