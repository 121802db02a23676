// The commands of `harvelctl` for those who translate the program.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

// Both give the exit code.

// Writes a complete language file.
int WriteLanguageTemplate(std::ostream& out);

// Looks into the language file `command.file` and names what is odd there.
int CheckLanguageFile(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

} // namespace harvelop
