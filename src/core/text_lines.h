// Small things that are done with texts everywhere.
#pragma once

#include <string>
#include <string_view>

namespace harvelop
{

// Hands out the lines of a text one by one; CR LF, LF and CR each end a line. A last line without an end counts, an
// empty rest does not.
class LineReader
{
public:
    explicit LineReader(std::string_view text) : m_text(text), m_nextCr(text.find('\r')), m_nextLf(text.find('\n')) {}
    bool Next(std::string_view& line); // false at the end of the text

private:
    std::string_view m_text;
    size_t m_at = 0; // where the next line begins
    size_t m_nextCr; // the ends that stand nearest behind it, each looked for once
    size_t m_nextLf;
};

constexpr std::string_view CrLf = "\r\n"; // ends every line that the program writes or sends

// Position of `part` in `text` without regard to ASCII case; npos if it does not occur.
size_t FindIgnoringCase(std::string_view text, std::string_view part);
inline bool HoldsIgnoringCase(std::string_view text, std::string_view part)
{
    return FindIgnoringCase(text, part) != std::string_view::npos;
}

inline bool Holds(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

// `text` with a blank for each CR and LF: what is written as a part of one line must not begin another.
std::string OneLine(std::string text);

// `text` with only the characters that occur in `allowed`.
std::string KeepAllowed(std::string_view text, std::string_view allowed);

} // namespace harvelop
