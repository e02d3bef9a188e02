#include "tests/unit/engine/PlainDispatcher.h"

#include <algorithm>
#include <utility>

PlainDispatcher::PlainDispatcher(QPoint pointerAt)
    : pointer(pointerAt)
    , m_saved(pointerAt)
{
}

void PlainDispatcher::button(int button, bool pressing)
{
    if (button < 0 || button > 9) {
        return;
    }
    const bool wasDown = m_down[button];
    m_down[button] = pressing;
    const shortCut a = actions[button][m_layer];
    if (a.key1 == 0x1001262) {
        sendMidi(a, pressing);
    } else if (a.key1 == 0x1001261) {
        if (pressing || wasDown) {
            m_mode = 5;
            m_midiLayer = m_layer;
            m_midiButton = button;
            m_midiValue = 0;
        }
    } else if (a.key1 == 0x1FFFFFF) {
        special(a.key2, button, pressing, wasDown);
    } else {
        sendKey(a.key1, pressing);
        sendKey(a.key2, pressing);
        sendKey(a.key3, pressing);
    }
    if (!pressing && m_setLayer[button]) {
        m_setLayer[button] = false;
        m_layer = 0;
    }
    forgetChordWithoutButtons();
}

void PlainDispatcher::setMode(int mode, bool pressing, bool wasDown)
{
    if (pressing || wasDown) {
        m_mode = mode;
    }
}

void PlainDispatcher::special(int code, int button, bool pressing, bool wasDown)
{
    if (code == 2 && pressing) {
        jump(false);
    } else if (code == 3 && pressing) {
        jump(true);
    } else if (code == 4) {
        setMode(2, pressing, wasDown);
        m_horizontal = pressing;
        checkChord(pressing);
    } else if (code == 5) {
        setMode(1, pressing, wasDown);
        m_vertical = pressing;
        checkChord(pressing);
    } else if (code == 6) {
        setMode(0, pressing, wasDown);
        m_circular = pressing;
        checkChord(pressing);
    } else if (code == 7) {
        setMode(4, pressing, wasDown);
    } else if (code == 8) {
        setMode(3, pressing, wasDown);
    } else if (code == 9 || code == 10) {
        if (pressing) {
            m_layer = code == 9 ? 1 : 2;
            m_setLayer[button] = true;
        } else {
            m_layer = 0;
        }
    }
}

void PlainDispatcher::checkChord(bool pressing)
{
    if (!pressing) {
        return;
    }
    if (m_horizontal && m_vertical && m_circular) {
        if (!m_game) {
            m_lines << QStringLiteral("panel GAME");
        }
        m_game = true;
    } else {
        if (m_game) {
            m_lines << QStringLiteral("panel ZR");
        }
        m_game = false;
    }
}

void PlainDispatcher::knob(char type)
{
    if (type == 'D' && !m_finger) {
        m_finger = true;
        m_fingerForGame = m_game;
    }
    if (type == 'D' && !m_game) {
        m_touchedMode = m_mode;
        m_touchedMidi = actions[m_midiButton][m_midiLayer];
    }
    if (m_game) {
        m_lines << QStringLiteral("game %1").arg(QLatin1Char(type == 'U' ? 'S' : type));
    } else if (m_mode == 5) {
        midiKnob(type, actions[m_midiButton][m_midiLayer]);
    } else if (type == 'U') {
        setPointerHidden(false);
        if (m_mode == 0) {
            moveTo(m_saved.x(), m_saved.y());
            m_jumped = false;
            m_restorePointValid = false;
            m_restorePointAt.append(m_now + 1000);
        }
    } else if (type == 'D') {
        m_touched = true;
        setPointerHidden(true);
        if (m_mode == 0 && m_restorePointValid) {
            m_saved = pointer;
            m_jumped = false;
        }
    } else if (m_touched && !m_userMoves) {
        step(type);
    }
    if (type == 'U') {
        m_touched = false;
        m_finger = false;
    }
}

void PlainDispatcher::count(int count)
{
    const qint64 s = qint64(m_last) + count;
    if (s > -10 && s < 10) {
        return;
    }
    const int sensitivity = m_layer == 1 ? sensitivityShift1 : sensitivityNormal;
    m_ring.removeFirst();
    m_ring.append(count / sensitivity);
    QVector<int> sorted = m_ring;
    std::sort(sorted.begin(), sorted.end());
    const int m = static_cast<int>((qint64(sorted[1]) + qint64(sorted[2])) / 2);
    if (m_last < m) {
        knob('R');
    } else if (m_last > m) {
        knob('L');
    }
    m_last = m;
}

void PlainDispatcher::letKnobGo()
{
    m_game = false;
    if (m_finger && !m_fingerForGame && m_touchedMode == 5) {
        midiKnob('U', m_touchedMidi);
    } else if (m_finger && !m_fingerForGame) {
        const int mode = std::exchange(m_mode, m_touchedMode);
        knob('U');
        m_mode = mode;
    }
    m_finger = false;
    m_touched = false;
}

void PlainDispatcher::mouseMoved(QPoint to)
{
    pointer = to;
    m_reEnableAt = m_now + 250;
    if (m_userMoves) {
        return;
    }
    if (m_touched && m_hidden) {
        setPointerHidden(false);
    }
    if (m_touched && m_mode == 0 && !m_jumped) {
        moveTo(m_saved.x(), m_saved.y());
    }
    m_userMoves = true;
}

void PlainDispatcher::advance(int milliseconds)
{
    for (int passed = 0; passed < milliseconds; ++passed) {
        ++m_now;
        if (m_restorePointAt.removeAll(m_now) > 0) {
            m_restorePointValid = true;
        }
        if (m_now == m_reEnableAt) {
            reEnable();
        }
    }
}

void PlainDispatcher::reEnable()
{
    if (!m_userMoves) {
        return;
    }
    m_saved = pointer;
    m_jumped = false;
    if (m_touched && !m_hidden) {
        setPointerHidden(true);
    }
    m_userMoves = false;
}

QStringList PlainDispatcher::takeLines()
{
    return std::exchange(m_lines, {});
}

void PlainDispatcher::sendKey(qint32 code, bool down)
{
    if (code != -1 && (code & 0xFFFF) != 0) {
        m_lines << QStringLiteral("key %1 %2")
                       .arg(code & 0xFFFF)
                       .arg(down ? QLatin1String("down") : QLatin1String("up"));
    }
}

void PlainDispatcher::tap(int code)
{
    sendKey(code, true);
    sendKey(code, false);
}

void PlainDispatcher::moveTo(qint64 x, qint64 y)
{
    pointer = QPoint(static_cast<int>(x), static_cast<int>(y));
    m_lines << QStringLiteral("move %1 %2").arg(x).arg(y);
}

void PlainDispatcher::setPointerHidden(bool hide)
{
    if (m_mode == 3 || m_mode == 4) {
        return;
    }
    m_lines << (hide ? QStringLiteral("left down") : QStringLiteral("left up"));
    m_hidden = hide;
    m_lines << (hide ? QStringLiteral("hide") : QStringLiteral("show"));
}

void PlainDispatcher::step(char direction)
{
    if (direction != 'L' && direction != 'R') {
        return;
    }
    const bool left = direction == 'L';
    if (m_mode == 3) {
        tap(left ? 0x26 : 0x28);
    } else if (m_mode == 4) {
        tap(left ? 0x27 : 0x25);
    } else if (m_mode == 2) {
        moveTo(qint64(pointer.x()) + (left ? -1 : 1), pointer.y());
    } else {
        moveTo(pointer.x(), qint64(pointer.y()) + (left ? 1 : -1));
    }
}

void PlainDispatcher::jump(bool right)
{
    // In the random test the screens stand in one row and the nearest one is told by the x coordinate alone.
    int n = 0;
    while (n + 1 < screens.size() && pointer.x() >= screens.at(n + 1).left()) {
        ++n;
    }
    const int t = right ? (n == 0 ? screens.size() - 1 : n - 1) : (n + 1 == screens.size() ? 0 : n + 1);
    const QRect target = screens.at(t);
    const qint64 dx = qint64(pointer.x()) - screens.at(n).left();
    const qint64 dy = qint64(pointer.y()) - screens.at(n).top();
    m_jumped = true;
    moveTo(target.left() + (dx > target.width() ? target.width() / 2 : dx),
           target.top() + (dy > target.height() ? target.height() / 2 : dy));
}

void PlainDispatcher::midiKnob(char type, const shortCut &a)
{
    if (a.key1 != 0x1001261) {
        return;
    }
    if (type == 'D' || type == 'U') {
        sendMidi(a, type == 'D');
        return;
    }
    if (type != 'L' && type != 'R') {
        return;
    }
    const bool left = type == 'L';
    shortCut message;
    message.channel = a.channel;
    message.cc = a.knobcc;
    if (a.m01h) {
        message.v_on = left ? 0x7F : 0x01;
    }
    if (a.m3fh) {
        message.v_on = left ? 0x3F : 0x41;
    }
    if (a.m0_127) {
        if (left) {
            m_midiValue = std::max(0, m_midiValue - 1);
            message.v_on = m_midiValue;
        } else if (m_midiValue <= 125) {
            message.v_on = ++m_midiValue;
        } else {
            message.v_on = 127;
        }
    }
    sendMidi(message, true);
}

void PlainDispatcher::sendMidi(const shortCut &a, bool pressing)
{
    if ((!pressing && !a.v_off_enable) || a.cc == -1) {
        return;
    }
    const int kind = a.note ? (pressing ? 0x90 : 0x80) : 0xB0;
    QStringList bytes;
    for (const int byte : {kind + a.channel - 1, a.cc, pressing ? a.v_on : a.v_off}) {
        bytes << QString::number(byte & 0xFF, 16).rightJustified(2, QLatin1Char('0')).toUpper();
    }
    m_lines << QStringLiteral("midi ") + bytes.join(QLatin1Char(' '));
}

void PlainDispatcher::forgetChordWithoutButtons()
{
    if (std::none_of(std::begin(m_down), std::end(m_down), [](bool down) { return down; })) {
        m_vertical = m_horizontal = m_circular = false;
    }
}
