#include "platform/qt/line_settings.h"

#include <charconv>
#include <string_view>

namespace harvelop
{

namespace
{
// Takes the text up to the next comma off the front.
std::string_view TakeField(std::string_view& text)
{
    const size_t comma = text.find(',');
    const std::string_view field = text.substr(0, comma);
    text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    return field;
}

std::optional<int> ReadNumber(std::string_view text, int low, int high)
{
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || number < low || number > high)
        return std::nullopt;
    return number;
}

std::optional<char> ReadParity(std::string_view text)
{
    constexpr std::string_view Either = "NEOMSneoms";
    const size_t at = text.size() == 1 ? Either.find(text[0]) : std::string_view::npos;
    if (at == std::string_view::npos)
        return std::nullopt;
    return Either[at % (Either.size() / 2)];
}

std::optional<StopBits> ReadStopBits(std::string_view text)
{
    if (text == "1")
        return StopBits::One;
    if (text == "1.5")
        return StopBits::OneAndHalf;
    if (text == "2")
        return StopBits::Two;
    return std::nullopt;
}
} // namespace

std::optional<LineSettings> ReadLineSettings(std::string_view text)
{
    constexpr int LowestBaud = 50;
    constexpr int HighestBaud = 4'000'000;
    const auto baud = ReadNumber(TakeField(text), LowestBaud, HighestBaud);
    const auto parity = ReadParity(TakeField(text));
    const auto dataBits = ReadNumber(TakeField(text), 5, 8);
    const auto stopBits = ReadStopBits(text);
    if (!baud || !parity || !dataBits || !stopBits)
        return std::nullopt;
    return LineSettings{*baud, *parity, *dataBits, *stopBits};
}

} // namespace harvelop
