#include "core/text_lines.h"

#include <algorithm>

namespace harvelop
{

namespace
{

// ASCII only, whatever the user's locale is.
char toSmall(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char toLarge(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace

bool LineReader::Next(std::string_view& line)
{
    if (m_at >= m_text.size())
        return false;
    const size_t end = std::min({m_nextCr, m_nextLf, m_text.size()});
    line = m_text.substr(m_at, end - m_at);
    const bool pair = end == m_nextCr && m_nextLf == end + 1;
    m_at = end + (pair ? 2 : 1);
    if (m_nextCr < m_at)
        m_nextCr = m_text.find('\r', m_at);
    if (m_nextLf < m_at)
        m_nextLf = m_text.find('\n', m_at);
    return true;
}

size_t FindIgnoringCase(std::string_view text, std::string_view part)
{
    if (part.empty())
        return 0;
    // Both spellings of the first character are looked for at full speed: files of many megabytes pass through here.
    const char small = toSmall(part.front());
    const char large = toLarge(part.front());
    size_t nextSmall = text.find(small);
    size_t nextLarge = text.find(large);
    for (;;) {
        const size_t at = std::min(nextSmall, nextLarge);
        if (at == std::string_view::npos || text.size() - at < part.size())
            return std::string_view::npos;
        if (std::equal(part.begin(), part.end(), text.substr(at).begin(),
                       [](char a, char b) { return toSmall(a) == toSmall(b); }))
            return at;
        if (at == nextSmall)
            nextSmall = text.find(small, at + 1);
        if (at == nextLarge)
            nextLarge = text.find(large, at + 1);
    }
}

std::string OneLine(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return text;
}

std::string KeepAllowed(std::string_view text, std::string_view allowed)
{
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), [&](char c) { return Holds(allowed, {&c, 1}); });
    return kept;
}

} // namespace harvelop
