// The ordinary conversions between texts and numbers, as the data files and the panels use them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// An optional sign, decimal digits with an optional fraction and exponent, blanks around it. Anything else, and what no
// double can hold, fails.
std::optional<double> ToDouble(std::string_view text);

// As ToDouble, then rounded to a whole number, halves to the even one. Fails outside -32768 to 32767.
std::optional<std::int16_t> ToInt16(std::string_view text);

// "True" and "False" in any case, or a number: 0 is false, any other true.
std::optional<bool> ToBoolean(std::string_view text);

std::string BooleanText(bool value);  // "True" or "False"
std::string NumberText(double value); // the shortest decimal text that reads back as the same value
std::string NumberText(float value);

} // namespace harvelop
