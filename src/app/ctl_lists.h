// `harvelctl lists`: to which addresses a logger's data go.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

// Shows the delivery lists of a logger on `out`, or changes them by the rules of their editor. Gives the exit code; a
// refused change and a file that can't be read or written are told. What is refused changes nothing.
int WorkOnLists(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

} // namespace harvelop
