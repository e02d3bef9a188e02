#include "tools/simulator/Output.h"

#include <cstdio>

namespace simulator
{

void print(const QString &text, bool toError)
{
    FILE *const stream = toError ? stderr : stdout;
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

} // namespace simulator
