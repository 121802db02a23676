#include "core/text_numbers.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

namespace harvelop
{

namespace
{

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string_view trimBlanks(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

template <typename Float> std::string shortest(Float value)
{
    if (value == 0)
        return "0";
    // Fixed notation as far as a person writes numbers so; beyond that with an exponent.
    const double size = std::fabs(static_cast<double>(value));
    const auto format = size >= 1e15 || size < 1e-4 ? std::chars_format::scientific : std::chars_format::fixed;
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format);
    return std::string(buffer.data(), result.ptr);
}

} // namespace

std::optional<double> ToDouble(std::string_view text)
{
    text = trimBlanks(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-')
            return std::nullopt;
    }
    // from_chars also takes "inf", "nan" and the like; a number here begins with a digit or a point.
    const std::string_view digits = !text.empty() && text.front() == '-' ? text.substr(1) : text;
    const bool begins =
        !digits.empty() && (isDigit(digits[0]) || (digits[0] == '.' && digits.size() > 1 && isDigit(digits[1])));
    if (!begins)
        return std::nullopt;
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<std::int16_t> ToInt16(std::string_view text)
{
    const auto value = ToDouble(text);
    if (!value)
        return std::nullopt;
    const double rounded = std::nearbyint(*value);
    if (rounded < std::numeric_limits<std::int16_t>::min() || rounded > std::numeric_limits<std::int16_t>::max())
        return std::nullopt;
    return static_cast<std::int16_t>(rounded);
}

std::optional<bool> ToBoolean(std::string_view text)
{
    const std::string_view word = trimBlanks(text);
    if (equalsIgnoringCase(word, "True"))
        return true;
    if (equalsIgnoringCase(word, "False"))
        return false;
    const auto value = ToDouble(text);
    return value ? std::optional<bool>(*value != 0) : std::nullopt;
}

std::string BooleanText(bool value)
{
    return value ? "True" : "False";
}

std::string NumberText(double value)
{
    return shortest(value);
}

std::string NumberText(float value)
{
    return shortest(value);
}

} // namespace harvelop
