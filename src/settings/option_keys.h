// The tables behind `options.ini`: which keys there are, where each is kept, and in which order they are asked for.
#pragma once

#include "settings/options.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace harvelop
{

using OptionVariable =
    std::variant<std::string Options::*, bool Options::*, std::int16_t Options::*, double Options::*, float Options::*>;

// A key that can be assigned to a variable.
struct OptionKey {
    std::string_view section;
    std::string_view key;
    OptionVariable variable;
    OptionVariable written = variable;    // what a save writes under this key
    std::string_view insteadOfEmpty = {}; // an empty text repairs itself to this
    bool repairIsReturned = false;        // and the caller is told the repaired text
};

// Looks up a key by its section; nullptr if no variable belongs to it.
const OptionKey* FindOptionKey(std::string_view section, std::string_view key);

// The keys of a saved file, in its order.
std::span<const OptionKey> SavedOptionKeys();

// The lines of the file that a first run gets.
std::span<const std::string_view> DefaultOptionLines();

struct OptionRequest {
    std::string_view section;
    std::string_view key;
};

// What a start asks for, in its order, but for the terminal's keys.
std::span<const OptionRequest> StartOptionRequests();

// What the terminal's window asks for, in its order.
std::span<const OptionRequest> TerminalOptionRequests();

// Puts a text into a variable; false, and nothing changed, if it does not convert.
bool AssignOption(Options& options, const OptionVariable& variable, const std::string& text);

// A variable as its line in the file spells it.
std::string OptionText(const Options& options, const OptionVariable& variable);

} // namespace harvelop
