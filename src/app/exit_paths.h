// The ends of the program that belong to the hidden main object.
#pragma once

#include "app/program.h"

namespace harvelop
{

// The unload of `frmTaskbar`: a logger still connected gets its final line. Takes about a second; does not end the
// program by itself.
void UnloadTaskbar(Program& program);

// The tray menu's Exit: saves, unloads, ends.
void mpopExit_Click(Program& program);

} // namespace harvelop
