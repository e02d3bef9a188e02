#pragma once

#include <string>

/// The console that a program without one of its own was started from.
namespace Win32Terminal
{

/// Prints to standard output or error: to the file or pipe that the user has led it to, in UTF-8, else to the
/// console of the shell that has started the program. Without either, nothing happens.
void print(const std::wstring &text, bool toError);

} // namespace Win32Terminal
