#pragma once

#include "app/Commands.h"

/// Commands that the running copy of the program carries out. See RemoteControl.
namespace RemoteCommands
{

int use(const CommandCall &call);
int list(const CommandCall &call);
int show(const CommandCall &call);
int status(const CommandCall &call);

/// What a second start with --verbose asks for.
int verbose();

} // namespace RemoteCommands
