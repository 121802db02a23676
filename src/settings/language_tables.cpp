#include "settings/language_tables.h"

#include "core/text_lines.h"
#include "core/text_numbers.h"
#include "settings/message_texts.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace harvelop
{

namespace
{

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF"; // common editors put it before the first line
constexpr size_t Fonts = 5;
constexpr std::array<std::string_view, Fonts> FontKeys = {"Font1=", "Font2=", "Font3=", "Font4=", "Font5="};
constexpr size_t FontNameStart = 6; // a font's name stands here, wherever in the line its key does: that is meant
constexpr size_t FontNameLength = 30;
constexpr size_t ShortestMessageLine = 5;
constexpr size_t MaxMessageLines = 1000;

// What a first pass over the file keeps of it.
struct LanguageLines {
    std::array<std::string_view, Fonts> fontNames;
    std::vector<std::string> messages;
};

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

LanguageLines readLines(std::string_view text)
{
    if (text.substr(0, ByteOrderMark.size()) == ByteOrderMark)
        text.remove_prefix(ByteOrderMark.size());
    LanguageLines kept;
    LineReader lines(text);
    std::string_view line;
    while (lines.Next(line)) {
        for (size_t font = 0; font < Fonts; ++font)
            if (Holds(line, FontKeys[font]))
                kept.fontNames[font] = line.substr(std::min(FontNameStart, line.size()), FontNameLength);
        if (!isMessageLine(line))
            continue;
        if (kept.messages.size() == MaxMessageLines)
            break;
        kept.messages.push_back(cleaned(line));
    }
    return kept;
}

// The four parts of a message line.
struct MessageLine {
    int number = 0; // 1 to 1000
    std::string_view font;
    std::string_view size;
    std::string_view text;
};

std::optional<MessageLine> splitMessage(std::string_view line)
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
    return MessageLine{static_cast<int>(*number), parts[1], parts[2], line};
}

// The place of a font by its digit; none for anything else.
std::optional<size_t> fontOf(std::string_view digit)
{
    if (digit.size() != 1 || digit[0] < '1' || digit[0] >= static_cast<char>('1' + Fonts))
        return std::nullopt;
    return static_cast<size_t>(digit[0] - '1');
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

void LanguageTables::LoadLanguageFile()
{
    const std::string path = m_state.AppPath + m_options.Language + ".txt";
    const FileText file = m_files.Read(path);
    if (file.state != FileState::Read) {
        m_dialogs.Show({"The file " + path + " could not be found.     ", " Harvel", BoxIcon::Critical});
        m_end.EndProgram();
        return;
    }
    m_entries.fill({});
    const LanguageLines kept = readLines(file.text);
    for (const std::string& line : kept.messages) {
        const auto message = splitMessage(line);
        if (!message)
            continue;
        // A repeated number goes on where the former line ended: that is meant.
        Entry& entry = m_entries[static_cast<size_t>(message->number - 1)];
        entry.text += message->text;
        entry.fontSize = appendDigits(entry.fontSize, message->size);
        if (const auto font = fontOf(message->font))
            entry.fontName = kept.fontNames[*font];
    }
}

const LanguageTables::Entry* LanguageTables::entry(int number) const
{
    return number >= 1 && number <= LangEntries ? &m_entries[static_cast<size_t>(number - 1)] : nullptr;
}

std::optional<std::string> LanguageTables::LangText(int number) const
{
    const Entry* found = entry(number);
    return found ? std::optional<std::string>(found->text) : std::nullopt;
}

std::string LanguageTables::LangFontName(int number) const
{
    const Entry* found = entry(number);
    return found ? found->fontName : std::string();
}

std::int16_t LanguageTables::LangFontSize(int number) const
{
    const Entry* found = entry(number);
    return found ? found->fontSize : std::int16_t{0};
}

std::string LanguageTables::Text(int number) const
{
    return LangActive ? LangText(number).value_or("") : std::string(EnglishText(number));
}

void ApplyLangFont(const LanguageTables& language, CaptionedControl& control, const LangPieces& pieces)
{
    std::string caption;
    for (const auto& [number, suffix] : pieces)
        if (number != 0)
            caption += language.LangText(number).value_or("") + suffix;
    if (pieces.empty())
        return;
    control.SetCaption(caption);
    control.SetFontName(language.LangFontName(pieces.front().first));
    control.SetFontSize(language.LangFontSize(pieces.front().first));
}

} // namespace harvelop
