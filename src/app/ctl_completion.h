// What a shell completes behind `harvelctl`, made from the tables of commands and options.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace harvelop
{

constexpr std::array<std::string_view, 3> CompletionShells = {"bash", "zsh", "fish"};

// The script that a shell of this name reads; empty for any other.
std::string CompletionScript(std::string_view shell);

} // namespace harvelop
