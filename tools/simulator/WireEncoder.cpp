#include "tools/simulator/WireEncoder.h"

namespace simulator::wire
{

QByteArray button(int button, bool pressed)
{
    QByteArray message(pressed ? "BP" : "BR");
    message += static_cast<char>('0' + button);
    return message + terminator;
}

QByteArray knob(char type)
{
    QByteArray message("KN");
    message += type;
    return message + terminator;
}

QByteArray count(int value)
{
    return QByteArray::number(value) + terminator;
}

} // namespace simulator::wire
