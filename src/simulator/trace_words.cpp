#include "simulator/trace_words.h"

#include <algorithm>
#include <charconv>

namespace harvelop
{

namespace
{

// A whole number in digits only; below 0: it is none.
int numberIn(std::string_view digits, int base = 10)
{
    int number = -1;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    return result.ec == std::errc() && result.ptr == digits.data() + digits.size() && digits[0] != '-' ? number : -1;
}

} // namespace

void TraceWords::skipBlank()
{
    if (m_rest.starts_with(' '))
        m_rest.remove_prefix(1);
    else
        m_good = m_good && m_rest.empty();
}

std::string TraceWords::Word()
{
    std::string word(m_rest.substr(0, m_rest.find(' ')));
    m_rest.remove_prefix(word.size());
    skipBlank();
    return word;
}

int TraceWords::Number(int most)
{
    const int number = numberIn(Word());
    m_good = m_good && number >= 0 && number <= most;
    return m_good ? number : 0;
}

double TraceWords::TimeMs()
{
    constexpr std::string_view Pattern = "00:00:00.000";
    const std::string word = Word();
    m_good = m_good && std::ranges::equal(word, Pattern, [](char c, char pattern) {
                 return pattern == '0' ? c >= '0' && c <= '9' : c == pattern;
             });
    if (!m_good)
        return 0;
    const std::string_view time = word;
    const int minutes = 60 * numberIn(time.substr(0, 2)) + numberIn(time.substr(3, 2));
    return 1000.0 * (60 * minutes + numberIn(time.substr(6, 2))) + numberIn(time.substr(9, 3));
}

TraceText TraceWords::Quoted()
{
    TraceText text;
    m_good = m_good && m_rest.starts_with('"');
    for (std::size_t at = 1; m_good; ++at) {
        const char c = at < m_rest.size() ? m_rest[at] : '\0';
        if (c == '"') {
            m_rest.remove_prefix(at + 1);
            skipBlank();
            return text;
        }
        const std::optional<int> code = c == '\\' ? escaped(++at) : static_cast<unsigned char>(c);
        m_good = code && c >= ' ' && c <= '~';
        text.push_back(code.value_or(0));
    }
    return {};
}

// What stands behind a backslash; `at` is left on its last character.
std::optional<int> TraceWords::escaped(std::size_t& at) const
{
    const char c = at < m_rest.size() ? m_rest[at] : '\0';
    switch (c) {
    case 'r':
        return '\r';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case '"':
    case '\\':
        return c;
    case '*':
        return HiddenPart;
    case 'x': {
        const std::string_view digits = m_rest.substr(at + 1, 2);
        const int code = digits.size() == 2 ? numberIn(digits, 16) : -1;
        at += 2;
        return code >= 0 ? std::optional(code) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::string PlainText(const TraceText& text, std::string_view forHidden)
{
    std::string plain;
    for (const int code : text)
        if (code == HiddenPart)
            plain += forHidden;
        else
            plain += static_cast<char>(code);
    return plain;
}

} // namespace harvelop
