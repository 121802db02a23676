// Shortcuts in the format of the desktops: the text of a .desktop file, and its name.
#pragma once

#include "platform/desktop.h"

#include <optional>
#include <string>

namespace harvelop
{

// The whole text of the file. Nothing if the format can't express what is to be started byte for byte: a text that is
// not UTF-8 or that holds a NUL. The name is only shown: what can't be, is shown as a blank or a substitute character.
std::optional<std::string> DesktopEntryText(const Shortcut& shortcut);

// Whether the text of a file is that of a shortcut of this name.
bool HasName(const std::string& entryText, const std::string& shortcutName);

// The file's name, which differs from the shortcut's only in what a file name can't hold. The first is tried first; the
// others are for shortcuts of different names that would otherwise share one file.
std::string DesktopFileName(const std::string& shortcutName, int number = 1);

// An argument as it stands in a command line of the format, before the escaping that every value gets.
std::string QuoteExecArgument(const std::string& argument);

} // namespace harvelop
