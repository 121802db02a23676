#include "settings/language_lines.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace harvelop
{

namespace
{

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF"; // common editors put it before the first line
constexpr std::array<std::string_view, LangFonts> FontKeys = {"Font1=", "Font2=", "Font3=", "Font4=", "Font5="};

bool isMessageLine(std::string_view line)
{
    return line.size() >= ShortestMessageLine && Holds(line, ":") && !Holds(line, "#");
}

std::string cleaned(std::string_view line)
{
    std::string text(line);
    std::erase(text, '\t');
    const size_t start = text.find_first_not_of(' ');
    if (start == std::string::npos)
        return {};
    return text.substr(start, text.find_last_not_of(' ') - start + 1);
}

std::optional<LanguageMessage> splitMessage(std::string_view line)
{
    std::array<std::string_view, 3> parts;
    for (std::string_view& part : parts) {
        const size_t colon = line.find(':');
        if (colon == std::string_view::npos)
            return std::nullopt;
        part = line.substr(0, colon);
        line.remove_prefix(colon + 1);
    }
    const auto number = ToDouble(parts[0]);
    if (!number || *number < 1 || *number > LangEntries || *number != static_cast<int>(*number))
        return std::nullopt;
    return LanguageMessage{static_cast<int>(*number), std::string(parts[1]), std::string(parts[2]), std::string(line)};
}

// Appends digits to the decimal text of a number. A character that is none, and a digit too many, is passed over.
std::int16_t appendDigits(std::int16_t number, std::string_view digits)
{
    constexpr int Most = std::numeric_limits<std::int16_t>::max();
    for (const char c : digits)
        if (c >= '0' && c <= '9' && number * 10 + (c - '0') <= Most)
            number = static_cast<std::int16_t>(number * 10 + (c - '0'));
    return number;
}

} // namespace

int ReadLanguageLines(std::string_view text, const std::function<void(const LanguageLine&)>& take)
{
    if (text.substr(0, ByteOrderMark.size()) == ByteOrderMark)
        text.remove_prefix(ByteOrderMark.size());
    LineReader reader(text);
    size_t messages = 0;
    std::string_view line;
    for (int number = 1; reader.Next(line); ++number) {
        LanguageLine read;
        read.line = number;
        read.text = line;
        for (size_t font = 0; font < LangFonts; ++font)
            read.fonts[font] = Holds(line, FontKeys[font]);
        read.fontName = line.substr(std::min(FontNameStart, line.size()), FontNameLength);
        read.looksLikeMessage = isMessageLine(line);
        const bool tooMany = read.looksLikeMessage && ++messages > MaxMessageLines;
        if (read.looksLikeMessage && !tooMany)
            read.message = splitMessage(cleaned(line));
        take(read); // also of one too many the fonts that it names count
        if (tooMany)
            return number;
    }
    return 0;
}

std::optional<size_t> FontOf(std::string_view digit)
{
    if (digit.size() != 1 || digit[0] < '1' || digit[0] >= static_cast<char>('1' + LangFonts))
        return std::nullopt;
    return static_cast<size_t>(digit[0] - '1');
}

LanguageEntries EntriesOf(std::string_view text)
{
    std::array<std::string_view, LangFonts> fontNames; // also of fonts that are named behind the texts
    std::vector<LanguageMessage> messages;
    ReadLanguageLines(text, [&](const LanguageLine& line) {
        for (size_t font = 0; font < LangFonts; ++font)
            if (line.fonts[font])
                fontNames[font] = line.fontName;
        if (line.message)
            messages.push_back(*line.message);
    });
    LanguageEntries entries;
    for (const LanguageMessage& message : messages) {
        LanguageEntry& entry = entries[static_cast<size_t>(message.number - 1)];
        entry.text += message.text;
        entry.fontSize = appendDigits(entry.fontSize, message.size);
        if (const auto font = FontOf(message.font))
            entry.fontName = fontNames[*font];
    }
    return entries;
}

} // namespace harvelop
