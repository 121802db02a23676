// `harvelctl options`: what `options.ini` keeps.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

// Shows the options on `out` or changes them as the options panel does, its Ok pressed. Gives the exit code; a refused
// change and a file that can't be read or written are told. What is refused changes nothing.
int WorkOnOptions(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

} // namespace harvelop
