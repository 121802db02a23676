// The lines of a language file, as the program reads them: for the tables that it fills and for what examines it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

constexpr int LangEntries = 1000;         // texts are numbered 1 to 1000
constexpr size_t LangFonts = 5;           // fonts are numbered 1 to 5
constexpr size_t FontNameStart = 6;       // a font's name stands here, wherever in the line its key does: meant
constexpr size_t FontNameLength = 30;     // in bytes; the rest is dropped
constexpr size_t ShortestMessageLine = 5; // in bytes; shorter lines are passed over
constexpr size_t MaxMessageLines = 1000;  // at the next one the reading stops

// The four parts of a message line, without tabs and outer blanks.
struct LanguageMessage {
    int number = 0; // 1 to 1000
    std::string font;
    std::string size;
    std::string text;
};

// A line may name several fonts, and be a message at the same time. One that is neither is passed over.
struct LanguageLine {
    int line = 0;                           // counted from 1
    std::string_view text;                  // as it stands in the file
    std::array<bool, LangFonts> fonts = {}; // those that it names
    std::string_view fontName;
    bool looksLikeMessage = false;          // counts as a message line, well-formed or not
    std::optional<LanguageMessage> message; // none if it is malformed
};

// Hands out one line after the other, as views into the text; keeps none, as a file may be all blank lines. Gives the
// line at which the reading stopped, the last one handed out; 0 if it went to the end.
int ReadLanguageLines(std::string_view text, const std::function<void(const LanguageLine&)>& take);

// The place of a font by its digit, 0 to 4; none for anything else.
std::optional<size_t> FontOf(std::string_view digit);

struct LanguageEntry {
    std::string text;
    std::string fontName;
    std::int16_t fontSize = 0;
};
// By number minus 1. A repeated number goes on where the former line ended, its size too: that is meant.
using LanguageEntries = std::array<LanguageEntry, LangEntries>;
LanguageEntries EntriesOf(std::string_view text);

} // namespace harvelop
