// The stored loggers as the commands of `harvelctl` find them.
#pragma once

#include "app/ctl_console.h"
#include "app/program.h"

namespace harvelop
{

// False, and told, if the loggers' file is there but can't be read.
bool LoggersReadable(Program& program, Console& console);

// The same of the options' file. What goes by the options, as a panel does by the accounts, is not done without them.
bool OptionsReadable(Program& program, Console& console);

// Loads the records. False, and told, if the file can't be read or holds a logger too many.
bool LoadLoggers(Program& program, Console& console);

// The same. False, and told, also if there is no logger of that number.
bool LoadLogger(Program& program, Console& console, int number);

// Whether there is a file of options: a missing one is made by the first look at it, which what only shows something,
// or is refused, must not do.
bool HasOptions(Program& program);

} // namespace harvelop
