#pragma once

#include <QString>

/// The program's log: one line per message, with time, level, category and text, on standard error and in a
/// file.
///
/// Qt's filter rules decide what is logged: per-event lines are at debug level, which is off unless asked
/// for.
namespace Logging
{

/// To be called once, before anything logs. @p verbose adds the lines that come with every event; the
/// environment variable QT_LOGGING_RULES wins over it.
void start(bool verbose);

/// Adds the lines that come with every event from now on, as start() does where it is asked to.
void addEvents();

/// Also writes what has been logged since start(), and what is logged from now on, to the file "veltrix.log"
/// in @p directory (see LogFile). Needs the application object.
void addFile(const QString &directory);

/// Writes what still waits for the file, and closes it. To be called when the event loop has ended.
void closeFile();

} // namespace Logging
