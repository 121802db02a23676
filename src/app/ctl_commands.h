// The commands of `harvelctl`, on the same heart as the windows.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"
#include "platform/line_input.h"

#include <ostream>

namespace harvelop
{

enum CtlExit : int { CtlDone = 0, CtlFailed = 1, CtlUsageError = 2 };

// Runs one command in the directory `directory` (absolute, without a trailing separator); results go to `out`, and
// `input`, without which there is no line terminal, is what that sends. Gives the exit code: 0 done, 1 nothing found,
// refused or failed.
int RunCtlCommand(Program& program, Console& console, const CtlCommand& command, const std::string& directory,
                  std::ostream& out, LineInput* input = nullptr);

// Whether the command opens a port or a network link, which has to be released again.
bool ReachesLoggers(CtlCommand::Verb verb);

// Somebody wants the running command to end: the link is released, a modem's as it has to be, then the program ends.
void InterruptCtl(Program& program);

} // namespace harvelop
