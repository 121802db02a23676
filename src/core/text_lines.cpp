#include "core/text_lines.h"

#include <algorithm>
#include <cctype>

namespace harvelop
{

bool LineReader::Next(std::string_view& line)
{
    if (m_rest.empty())
        return false;
    const size_t end = m_rest.find_first_of("\r\n");
    line = m_rest.substr(0, end);
    if (end == std::string_view::npos) {
        m_rest = {};
        return true;
    }
    const bool pair = m_rest[end] == '\r' && end + 1 < m_rest.size() && m_rest[end + 1] == '\n';
    m_rest.remove_prefix(end + (pair ? 2 : 1));
    return true;
}

size_t FindIgnoringCase(std::string_view text, std::string_view part)
{
    const auto same = [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    };
    const auto found = std::search(text.begin(), text.end(), part.begin(), part.end(), same);
    return found == text.end() && !part.empty() ? std::string_view::npos : static_cast<size_t>(found - text.begin());
}

std::string KeepAllowed(std::string_view text, std::string_view allowed)
{
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), [&](char c) { return Holds(allowed, {&c, 1}); });
    return kept;
}

} // namespace harvelop
