// Shortcuts in the format of the desktops: the text of a .desktop file, and its name.
#pragma once

#include "platform/desktop.h"

#include <optional>
#include <string>

namespace harvelop
{

// The whole text of the file. Nothing if the format can't express the shortcut byte for byte: a text that is not UTF-8
// or that holds a NUL.
std::optional<std::string> DesktopEntryText(const Shortcut& shortcut);

// The file's name, which differs from the shortcut's only in what a file name can't hold.
std::string DesktopFileName(const std::string& shortcutName);

// An argument as it stands in a command line of the format, before the escaping that every value gets.
std::string QuoteExecArgument(const std::string& argument);

} // namespace harvelop
