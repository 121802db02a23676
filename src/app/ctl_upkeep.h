// The commands of `harvelctl` for stored loggers that need no link: what the buttons Delete, Unload and Create Icon do.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

namespace harvelop
{

// All give the exit code; what fails is told.

// Asks, then deletes the logger and its delivery list; the numbers of those behind it go down by one.
int DeleteStored(Program& program, Console& console, const CtlCommand& command);

// Saves all and starts the unload program, for one logger if the command names one; does not wait for its end.
int StartUnload(Program& program, Console& console, const CtlCommand& command);

// Puts a shortcut for the logger on the user's desktop.
int MakeShortcut(Program& program, Console& console, const CtlCommand& command);

} // namespace harvelop
