#include "engine/KnobPointer.h"

#include "engine/Clock.h"
#include "engine/KeySynthesis.h"
#include "engine/ScreenJump.h"
#include "engine/platform/Pointer.h"
#include "engine/platform/PointerAppearance.h"

#include <algorithm>
#include <limits>

namespace
{

int addWithinRange(int value, int step)
{
    const qint64 sum = qint64(value) + step;
    return static_cast<int>(
        std::clamp<qint64>(sum, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace

KnobPointer::KnobPointer(KeySynthesis &keys, Pointer &pointer, PointerAppearance &appearance, Clock &clock,
                         QObject *parent)
    : QObject(parent)
    , m_keys(keys)
    , m_pointer(pointer)
    , m_appearance(appearance)
    , m_clock(clock)
    , m_returnPoint(pointer.position())
{
}

void KnobPointer::touch()
{
    m_touched = true;
    setPointerHidden(true);
    if (m_mode == KnobMode::Circular && m_returnPointMayChange) {
        noteReturnPoint();
    }
}

void KnobPointer::letGo()
{
    Q_EMIT turning(Turn::None);
    m_touched = false;
    setPointerHidden(false);
    if (m_mode == KnobMode::Circular) {
        m_pointer.moveTo(m_returnPoint);
        m_jumped = false;
        // A quick second touch goes on from the first one's return point. Each letting-go ends its own pause
        // only, so that after several the return point may change again 1000 ms after the first.
        m_returnPointMayChange = false;
        m_clock.singleShot(returnPointPause, this, [this] { m_returnPointMayChange = true; });
    }
}

void KnobPointer::endTouch()
{
    if (m_touched) {
        m_touched = false;
        Q_EMIT turning(Turn::None);
        Q_EMIT knobTouchShown(false);
    }
}

bool KnobPointer::turn(char direction)
{
    if (!m_touched || m_userMovesMouse) {
        return false;
    }
    if (direction == 'S') {
        Q_EMIT turning(Turn::None);
    }
    if (direction != 'L' && direction != 'R') {
        return false;
    }
    const bool left = direction == 'L';
    Q_EMIT turning(left ? Turn::Left : Turn::Right);
    switch (m_mode) {
    case KnobMode::UpDownKeys:
        m_keys.tapArrow(left ? ArrowKey::Up : ArrowKey::Down);
        break;
    case KnobMode::LeftRightKeys:
        m_keys.tapArrow(left ? ArrowKey::Right : ArrowKey::Left); // crossed on purpose
        break;
    case KnobMode::Horizontal:
        movePointerBy(left ? -1 : 1, 0);
        break;
    case KnobMode::Circular:
    case KnobMode::Vertical:
    case KnobMode::Midi:
        movePointerBy(0, left ? 1 : -1);
        break;
    }
    return true;
}

void KnobPointer::jumpToScreen(bool right)
{
    m_pointer.jumpTo(screenJumpTarget(m_pointer.position(), m_pointer.screens(), right));
    m_jumped = true;
}

void KnobPointer::userMovesMouse()
{
    constexpr std::chrono::milliseconds pause(mousePause);
    m_mouseRestsAt = m_clock.now() + pause;
    if (!m_waitsForMouseRest) {
        waitForMouseRest(pause);
    }
    if (m_userMovesMouse) {
        return;
    }
    if (m_touched && m_hidden) {
        setPointerHidden(false);
    }
    if (m_touched && m_mode == KnobMode::Circular && !m_jumped) {
        m_pointer.moveTo(m_returnPoint);
    }
    m_userMovesMouse = true;
}

void KnobPointer::reEnable()
{
    if (!m_userMovesMouse) {
        return;
    }
    noteReturnPoint();
    if (m_touched && !m_hidden) {
        setPointerHidden(true);
    }
    m_userMovesMouse = false;
}

void KnobPointer::restore()
{
    m_appearance.restore();
}

void KnobPointer::setPointerHidden(bool hide)
{
    Q_EMIT knobTouchShown(hide);
    if (m_mode == KnobMode::UpDownKeys || m_mode == KnobMode::LeftRightKeys) {
        return;
    }
    m_keys.leftButton(hide);
    m_hidden = hide;
    m_appearance.setHidden(hide);
}

void KnobPointer::movePointerBy(int dx, int dy)
{
    const QPoint from = m_pointer.position();
    m_pointer.moveTo(QPoint(addWithinRange(from.x(), dx), addWithinRange(from.y(), dy)));
}

void KnobPointer::noteReturnPoint()
{
    m_returnPoint = m_pointer.position();
    m_jumped = false;
}

// A mouse can report a thousand movements a second: they only shift the moment, and one wait runs at a time.
void KnobPointer::waitForMouseRest(std::chrono::milliseconds time)
{
    m_waitsForMouseRest = true;
    m_clock.singleShot(static_cast<int>(time.count()), this, [this] {
        m_waitsForMouseRest = false;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_mouseRestsAt - m_clock.now());
        if (left.count() > 0) {
            waitForMouseRest(left);
        } else {
            reEnable();
        }
    });
}
