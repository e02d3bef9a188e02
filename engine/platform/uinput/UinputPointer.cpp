#include "engine/platform/uinput/UinputPointer.h"

#include <algorithm>
#include <limits>

namespace
{

QRect bounds(const QVector<QRect> &screens)
{
    QRect all;
    for (const QRect &screen : screens) {
        all |= screen;
    }
    return all;
}

QPoint clamped(QPoint position, const QRect &screen)
{
    return {std::clamp(position.x(), screen.left(), screen.right()),
            std::clamp(position.y(), screen.top(), screen.bottom())};
}

/// The screen that holds a position, or the nearest one. @p screens has at least one.
const QRect &screenOf(QPoint position, const QVector<QRect> &screens)
{
    const auto distance = [position](const QRect &screen) {
        return (position - clamped(position, screen)).manhattanLength();
    };
    return *std::min_element(screens.begin(), screens.end(), [distance](const QRect &a, const QRect &b) {
        return distance(a) < distance(b);
    });
}

/// The jumping device's number for the middle of a pixel.
int numberOf(int pixel, int first, int length)
{
    const qint64 middle = (2 * (qint64(pixel) - first) + 1) * (UinputDevices::places + 1);
    return int(std::clamp<qint64>(middle / (2 * qint64(length)), 0, UinputDevices::places));
}

} // namespace

UinputPointer::UinputPointer(std::shared_ptr<UinputDevices> devices, Screens screens)
    : m_devices(std::move(devices))
    , m_screens(std::move(screens))
{
}

QPoint UinputPointer::position() const
{
    return m_place + m_moved;
}

QVector<QRect> UinputPointer::screens() const
{
    const QVector<QRect> screens = m_screens();
    return screens.isEmpty() ? QVector<QRect>{QRect(0, 0, 1920, 1080)} : screens;
}

void UinputPointer::forgetPlaceOnOtherScreens()
{
    m_known = m_known && m_screens() == m_jumpScreens;
}

void UinputPointer::moveTo(QPoint position)
{
    forgetPlaceOnOtherScreens();
    QPoint by = position - this->position();
    const bool isStep = by.manhattanLength() <= 1;
    if (m_known && !isStep &&
        screenOf(position, m_jumpScreens) != screenOf(this->position(), m_jumpScreens)) {
        by = -m_moved;
    }
    m_devices->moveBy(by.x(), by.y());
    m_moved += by;
    if (m_known) { // the pointer stops at the desktop's edge
        m_moved = clamped(this->position(), screenOf(this->position(), m_jumpScreens)) - m_place;
    }
}

void UinputPointer::jumpTo(QPoint position)
{
    const QVector<QRect> screens = m_screens();
    if (screens.size() < 2) {
        return;
    }
    forgetPlaceOnOtherScreens();
    const QRect &screen = screenOf(position, screens);
    m_place = m_known ? clamped(position, screen)
                      : screen.topLeft() + QPoint(screen.width() / 2, screen.height() / 2);
    m_moved = {};
    m_jumpScreens = screens;
    m_known = true;
    const QRect all = bounds(screens);
    m_devices->jumpTo(numberOf(m_place.x(), all.left(), all.width()),
                      numberOf(m_place.y(), all.top(), all.height()));
}
