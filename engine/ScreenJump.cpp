#include "engine/ScreenJump.h"

#include <algorithm>
#include <limits>

namespace
{

// 0 inside of [first, last]
qint64 distance(int value, int first, int last)
{
    if (value < first) {
        return qint64(first) - value;
    }
    return value > last ? qint64(value) - last : 0;
}

int screenOf(QPoint position, const QVector<QRect> &screens)
{
    int nearest = 0;
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int index = 0; index < screens.size(); ++index) {
        const QRect &screen = screens.at(index);
        const qint64 away = distance(position.x(), screen.left(), screen.right()) +
                            distance(position.y(), screen.top(), screen.bottom());
        if (away < shortest) {
            shortest = away;
            nearest = index;
        }
    }
    return nearest;
}

// One axis: the same distance from the edge, also when it equals the target's length, else the middle.
int coordinateOn(int value, int from, int targetFirst, int targetLast)
{
    const qint64 offset = qint64(value) - from;
    const qint64 length = qint64(targetLast) - targetFirst + 1;
    const qint64 result = targetFirst + (offset > length ? length / 2 : offset);
    return static_cast<int>(
        std::clamp<qint64>(result, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace

QPoint screenJumpTarget(QPoint position, const QVector<QRect> &screens, bool previous)
{
    if (screens.isEmpty()) {
        return position;
    }
    const int count = screens.size();
    const int here = screenOf(position, screens);
    const QRect &from = screens.at(here);
    const QRect &to = screens.at((here + (previous ? count - 1 : 1)) % count);
    return QPoint(coordinateOn(position.x(), from.left(), to.left(), to.right()),
                  coordinateOn(position.y(), from.top(), to.top(), to.bottom()));
}
