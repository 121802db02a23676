// The keys of a simulation file: what each takes and where it goes. The reader and the help walk the same tables.
#pragma once

#include "simulator/simulation_file.h"

#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>

namespace harvelop
{

template <typename Setup> struct KeyOf {
    std::string_view name;
    std::string_view takes;
    bool (*read)(const nlohmann::json&, Setup&); // false if the value is not of that kind
};
using LoggerKey = KeyOf<LoggerSetup>;
using ModemKey = KeyOf<ModemSetup>;

std::span<const LoggerKey> LoggerKeys();
std::span<const ModemKey> ModemKeys();

// The phone book is read apart, as its entries are loggers.
inline constexpr std::string_view PhoneBookKey = "phoneBook";

// A text without line ends and zeros; false if the value is none.
bool ReadText(const nlohmann::json& value, std::string& to);

} // namespace harvelop
