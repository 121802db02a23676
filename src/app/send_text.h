// The start that sends a command to one logger.
#pragma once

#include "app/launch.h"
#include "app/program.h"

#include <functional>

namespace harvelop
{

// Connects to `CurrentLogger`, sends the text of the launch and tells so. Without the terminal it ends the link and the
// program then; with it, `showTerminal` is called first and the program stays. An empty text is not sent at all.
void SendText(Program& program, const Launch& launch, const std::function<void()>& showTerminal);

} // namespace harvelop
