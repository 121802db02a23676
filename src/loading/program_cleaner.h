// Makes a program text small enough for flash memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// What of a line survives, not trimmed; none if the whole line is dropped. What is dropped: resets and remarks at the
// beginning, comments, small letters but for those behind a "/", and characters that no command needs. From the first
// double quote on everything survives, comments too: meant.
std::optional<std::string> CleanedLine(std::string_view line);

// The program, each line trimmed and ended by CR LF. Adds to `size` the characters of its lines as they were before
// trimming, without line ends. None if that passes 32,767; `size` is then what it was before the line that did it.
std::optional<std::string> CleanProgram(std::string_view text, std::int16_t& size);

} // namespace harvelop
