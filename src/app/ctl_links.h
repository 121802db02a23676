// The commands of `harvelctl` that enter a logger by hand and look whether it can be reached.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

// All give the exit code; what fails is told.

// Stores a logger as the add dialog's Ok does and prints its number. No port is opened.
int AddLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

// As the Test button of the dialog that changes a stored logger: looks for any logger there. Nothing is stored.
// With --json `out` gets what was found, if anything.
int TestLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

// Reaches the logger, sees whether it is the one that is stored, and releases it. `out` as above.
int ReachLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

// Makes the stored logger the one in work, with the options loaded. False, and told, if that can't be.
bool TakeLogger(Program& program, Console& console, int number);

// The link to the logger in work, right or wrong, is open and has not been lost.
bool LinkStands(Program& program);

// Tell what became of the link; give the exit code.
int NotReached(Console& console, int number);
int LinkLost(Console& console, int number);

} // namespace harvelop
