// Whether bytes are UTF-8, as files of ours have to be.
#pragma once

#include <optional>
#include <string_view>

namespace harvelop
{

// The byte, counted from 1, at which a text stops being UTF-8; none if it never does.
std::optional<size_t> FirstBadByte(std::string_view text);

} // namespace harvelop
