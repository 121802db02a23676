// The words of a line of a trace.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// The characters of a text between quotes, 0 to 255 each, or HiddenPart for "\*".
using TraceText = std::vector<int>;
constexpr int HiddenPart = -1;

// Takes the words of one line from its front. What is not there as it should be gives none, and `Good` is false
// from then on.
class TraceWords
{
public:
    explicit TraceWords(std::string_view line) : m_rest(line) {}

    std::string Word();   // up to the next blank; empty at the end of the line
    TraceText Quoted();   // a text between quotes, without what it is written with
    double TimeMs();      // "10:31:07.204", since midnight
    int Number(int most); // 0 to `most`
    bool AtEnd() const { return m_good && m_rest.empty(); }
    bool Good() const { return m_good; }

private:
    void skipBlank();
    std::optional<int> escaped(std::size_t& at) const;

    std::string_view m_rest;
    bool m_good = true;
};

std::string PlainText(const TraceText& text, std::string_view forHidden);

} // namespace harvelop
