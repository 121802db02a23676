// `harvelctl set`: fields of a stored logger, changed as its panel changes them.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

// Opens the logger's panel without showing it, makes the changes and presses Ok, so the loggers' file comes out as the
// window writes it. Gives the exit code; a refused change and a file that can't be written are told. What is refused
// leaves no trace. With --json `out` gets the fields that hold another value now.
int SetFields(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

} // namespace harvelop
