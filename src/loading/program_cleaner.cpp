#include "loading/program_cleaner.h"

#include "core/text_lines.h"

#include <algorithm>
#include <array>
#include <limits>

namespace harvelop
{

namespace
{

constexpr std::string_view Kept = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.()[]{}=-+*^:<>%/$,# \t";
constexpr std::array<std::string_view, 4> DroppedBeginnings = {"RESET", "\\", "D=\\", "T=\\"};

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool isDropped(std::string_view line)
{
    const std::string_view begin = trimmed(line);
    return line.empty() ||
           std::ranges::any_of(DroppedBeginnings, [begin](auto word) { return begin.starts_with(word); });
}

bool isSmallLetter(char c)
{
    return c >= 'a' && c <= 'z';
}

} // namespace

std::optional<std::string> CleanedLine(std::string_view line)
{
    if (isDropped(line))
        return std::nullopt;
    std::string cleaned;
    for (size_t i = 0; i < line.size() && line[i] != '\''; ++i) {
        if (line[i] == '"')
            return cleaned.append(line.substr(i));
        const bool isSwitch = isSmallLetter(line[i]) && i > 0 && line[i - 1] == '/';
        if (isSwitch || Kept.find(line[i]) != std::string_view::npos)
            cleaned += line[i];
    }
    return cleaned;
}

std::optional<std::string> CleanProgram(std::string_view text, std::int16_t& size)
{
    constexpr size_t MaxSize = std::numeric_limits<std::int16_t>::max();
    std::string program;
    LineReader lines(text);
    for (std::string_view line; lines.Next(line);) {
        const std::string cleaned = CleanedLine(line).value_or("");
        if (cleaned.empty())
            continue;
        if (cleaned.size() > MaxSize - static_cast<size_t>(size))
            return std::nullopt;
        size = static_cast<std::int16_t>(static_cast<size_t>(size) + cleaned.size());
        program.append(trimmed(cleaned)).append(CrLf);
    }
    return program;
}

} // namespace harvelop
