// The commands of `harvelctl` that try the accounts which deliver the data.
#pragma once

#include "app/ctl_console.h"
#include "app/program.h"

namespace harvelop
{

// Both log in to the server that the options name, tell how that goes, and give the exit code. Nothing is stored, no
// com port is opened.
int TestSMTPLogin(Program& program, Console& console);
int TestFTPLogin(Program& program, Console& console);

} // namespace harvelop
