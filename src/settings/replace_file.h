// How the data files are saved.
#pragma once

#include "platform/data_files.h"

#include <string>

namespace harvelop
{

// Replaces a file, unless one stands there that can't be read: the program never saw what it holds, and must not lose
// it. False if the old file stands.
inline bool ReplaceFile(DataFiles& files, const std::string& path, const std::string& text)
{
    return files.Read(path).state != FileState::Unreadable && files.Replace(path, text);
}

} // namespace harvelop
