#include "terminal/terminal_rules.h"

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr std::u16string_view LineEnd = u"\r\n";

bool isLineEnd(char16_t c)
{
    return c == u'\r' || c == u'\n';
}

// A byte that goes on a character.
bool isFollower(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// How many bytes the character has that begins so.
std::size_t lengthOf(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    return byte >= 0xF0U ? 4 : byte >= 0xE0U ? 3 : byte >= 0xC0U ? 2 : 1;
}

} // namespace

SendOutcome SendCurrentLine(const SendPane& pane)
{
    std::size_t from = std::min(pane.caret, pane.text.size());
    for (std::size_t steps = 0; steps < LongestWalk && from > 0 && !isLineEnd(pane.text[from - 1]); ++steps)
        --from;
    // Meant: the walk goes on behind the line, to the end of the pane.
    std::u16string sent = pane.text.substr(from, LongestWalk);
    std::u16string text = pane.text + std::u16string(LineEnd);
    const std::size_t caret = std::min(pane.caret + LineEnd.size(), text.size());
    return {{std::move(text), caret}, std::move(sent)};
}

SendOutcome SendWholePane(const SendPane& pane)
{
    SendPane after = pane;
    if (!after.text.ends_with(LineEnd))
        after.text += LineEnd;
    std::u16string sent = after.text;
    return {std::move(after), std::move(sent)};
}

SendOutcome EmptySendPane(const SendPane&)
{
    return {};
}

SendPane PaneOfEditor(std::u16string_view text, std::size_t caret)
{
    SendPane pane;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i == caret)
            pane.caret = pane.text.size();
        if (text[i] == u'\n')
            pane.text += LineEnd;
        else
            pane.text += text[i];
    }
    if (caret >= text.size())
        pane.caret = pane.text.size();
    return pane;
}

std::size_t EditorCaret(const SendPane& pane)
{
    const std::u16string_view before = std::u16string_view(pane.text).substr(0, pane.caret);
    return before.size() - static_cast<std::size_t>(std::count(before.begin(), before.end(), u'\n'));
}

ReceivedRows::Rows ReceivedRows::Take(std::string_view text)
{
    Rows rows;
    std::size_t row = 0;
    rows.text.reserve(text.size() + text.size() / RowLength);
    const auto endRow = [&] {
        rows.text += '\n';
        m_column = 0;
        ++row;
    };
    for (const char c : text) {
        const bool secondOfTwo = m_afterCr && c == '\n';
        m_afterCr = c == '\r';
        if (secondOfTwo)
            continue;
        if (c == '\r' || c == '\n') {
            endRow();
            continue;
        }
        if (!isFollower(c) && m_column++ == RowLength) {
            endRow();
            rows.continuing.push_back(row);
            m_column = 1;
        }
        rows.text += c;
    }
    return rows;
}

std::size_t WholeCharacters(std::string_view text)
{
    constexpr std::size_t Longest = 4;
    for (std::size_t back = 1; back <= std::min(Longest, text.size()); ++back) {
        const char c = text[text.size() - back];
        if (!isFollower(c))
            return lengthOf(c) > back ? text.size() - back : text.size();
    }
    return text.size();
}

PaneHeights HalfEach(int inner)
{
    return {inner - inner / 2, inner / 2};
}

PaneHeights WithSendHeight(int inner, int send)
{
    const int kept = std::clamp(send, 0, std::max(inner, 0));
    return {inner - kept, kept};
}

} // namespace harvelop
