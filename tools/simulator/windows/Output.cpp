#include "tools/simulator/Output.h"

#include "engine/platform/windows/win32/Win32Terminal.h"

namespace simulator
{

// A console has an encoding of its own, which is neither the system's nor that of files.
void print(const QString &text, bool toError)
{
    Win32Terminal::print(text.toStdWString(), toError);
}

} // namespace simulator
