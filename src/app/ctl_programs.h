// The commands of `harvelctl` that change what a logger runs and stores.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

// All give the exit code, tell what fails, and do what the buttons of the logger's panel do, with the same locks; the
// link is always released. What the panel has no button for, on that model, is refused before anything is opened.

// Sends the program file to the memory, the card or the flash memory. The dialogs answer the file chooser with it.
int LoadFile(Program& program, Console& console, const CtlCommand& command);

// Prints the jobs in the logger's order, one a line, the running one with its star.
int ListJobs(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

// Deletes the job, all jobs, or what the memory, the card or the flash memory holds. A job that the logger does not
// list is refused: then nothing is deleted.
int ClearLogger(Program& program, Console& console, const CtlCommand& command);

} // namespace harvelop
