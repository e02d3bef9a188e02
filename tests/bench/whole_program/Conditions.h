#pragma once

#include <QProcess>

class ProgramHome;
class XServer;

/// What is the same for everything that is measured.
namespace conditions
{

/// No MIDI system, and no desktop of the tester's own.
QProcessEnvironment environment(const XServer &server, const ProgramHome &home);

enum class Core { First, Last };

/// Puts this program, and what it starts from now on, on the first or on the last core. The server and who
/// watches get the one, the contestants the other: where the scheduler would happen to put each of them
/// decides more than what it does.
void moveTo(Core core);

} // namespace conditions
