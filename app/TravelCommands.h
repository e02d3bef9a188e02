#pragma once

#include "app/Commands.h"

/// Mappings come in and go out as files.
namespace TravelCommands
{

/// The running copy imports a file; where none runs, it is done here.
int importFile(const CommandCall &call);

/// Works on the files alone, whether a copy runs or not.
int exportMapping(const CommandCall &call);

} // namespace TravelCommands
