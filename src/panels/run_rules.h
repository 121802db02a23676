// The rules of what is done after an unload.
#pragma once

#include <string>
#include <string_view>

namespace harvelop
{

// A command as one line: what was pasted as several is joined without a separator.
std::string WithoutLineEnds(std::string_view command);

// Why a program or command can't be kept in the logger's record, in words for the user; empty if it can. The record's
// fields are divided by commas and its lines by line ends, and nothing escapes either.
std::string_view WhyNotStored(std::string_view text);

} // namespace harvelop
