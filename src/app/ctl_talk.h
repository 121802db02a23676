// The commands of `harvelctl` that talk to a logger.
#pragma once

#include "app/ctl_arguments.h"
#include "app/ctl_console.h"
#include "app/program.h"
#include "platform/line_input.h"

#include <ostream>

namespace harvelop
{

// Both connect first, give the exit code, tell what fails and always release the link.

// Sends the text as one line and prints the lines that are answered, until there has been nothing for a second. An
// empty text is not sent. Without the right logger nothing is.
int SendLine(Program& program, Console& console, const CtlCommand& command, std::ostream& out);

// Sends each line of `input` and prints what comes in as it comes. A link that stands is talked on also to a wrong or
// silent logger, as the window's terminal does; the exit code is 1 then. A link that is lost ends it; so does the end
// of the lines, once nothing has come for a second.
int TalkToLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out, LineInput& input);

} // namespace harvelop
