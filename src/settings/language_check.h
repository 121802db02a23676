// Examines a language file: what a reader of it would miss, join or pass over.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

constexpr size_t MostFindings = 200;                                // in the lines of a file: more help nobody
constexpr const char* StoppedHere = "no more is told from here on"; // of the first one too many

struct LanguageFinding {
    int line = 0;     // counted from 1; 0 for what no line holds
    std::string text; // one line of words, without an end; may quote bytes of the file
};

// In the order of the lines, those without a line last. Empty for a file that is complete and well-formed. The file is
// read as the program reads it, so that what it makes of a line and what is said here can't differ. At the first
// finding too many the check stops and says so.
std::vector<LanguageFinding> CheckLanguage(std::string_view text);

} // namespace harvelop
