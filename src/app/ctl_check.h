// `harvelctl check`: what is odd in an application directory.
#pragma once

#include "app/ctl_arguments.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

// Looks at all data files in `AppPath` and names on `out` what is odd there, a line each as FILE:LINE: TEXT, or as a
// JSON array. Changes nothing. Gives the exit code: 1 if anything is odd.
int CheckDirectory(Program& program, const CtlCommand& command, std::ostream& out);

} // namespace harvelop
