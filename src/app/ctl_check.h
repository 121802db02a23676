// `harvelctl check`: what is odd in an application directory.
#pragma once

#include "app/ctl_arguments.h"
#include "app/program.h"

#include <ostream>
#include <string>

namespace harvelop
{

// A finding as compilers name a place, FILE:LINE: TEXT, so that editors can jump to it; what no line holds has the name
// of the file alone.
std::string FindingLine(const std::string& file, int line, const std::string& text);

// Looks at all data files in `AppPath` and names on `out` what is odd there, a line each as FILE:LINE: TEXT, or as a
// JSON array. Changes nothing. Gives the exit code: 1 if anything is odd.
int CheckDirectory(Program& program, const CtlCommand& command, std::ostream& out);

} // namespace harvelop
