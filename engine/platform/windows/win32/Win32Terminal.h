#pragma once

#include <string>

/// The console of a program, or the one that a program without was started from.
namespace Win32Terminal
{

/// Prints to standard output or error: to the file, pipe or device (NUL, say) that the user has led it to, in
/// UTF-8, else to the program's own console, or to that of the shell that has started it. Without any,
/// nothing happens.
void print(const std::wstring &text, bool toError);

} // namespace Win32Terminal
