#pragma once

#include <QString>

namespace simulator
{

/// Prints to standard output or error at once, in what its reader understands: the encoding of the terminal,
/// or, into a file or pipe on Windows, UTF-8. From any thread.
void print(const QString &text, bool toError = false);

} // namespace simulator
