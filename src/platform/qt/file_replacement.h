// Puts a whole new text in the place of a file.
#pragma once

#include <string>
#include <sys/types.h>

namespace harvelop
{

// In one step: a reader at any moment, and after a crash, sees the old text or the new one. Links are followed. An
// existing file keeps its mode, a new one gets 0600; `extraMode` is added to either. Where the folder can't be written
// an existing file is overwritten in place, after the room for it has been made sure of. Only a regular file is
// replaced. Gives 0 or the system's error number, and then the old text stands.
int ReplaceFile(const std::string& path, const std::string& text, mode_t extraMode = 0);

} // namespace harvelop
