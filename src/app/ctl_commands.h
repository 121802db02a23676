// The commands of `harvelctl`, on the same heart as the windows.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"

#include <ostream>

namespace harvelop
{

enum CtlExit : int { CtlDone = 0, CtlFailed = 1, CtlUsageError = 2 };

// Runs one command in the directory `directory` (absolute, without a trailing separator); results go to `out`. Gives
// the exit code: 0 done, 1 nothing found, refused or failed.
int RunCtlCommand(Program& program, Console& console, const CtlCommand& command, const std::string& directory,
                  std::ostream& out);

} // namespace harvelop
