#pragma once

#include "app/Commands.h"

/// Prints the licences of the program and of what it is built on.
namespace LicenceCommand
{

int run(const CommandCall &call);

} // namespace LicenceCommand
