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

} // namespace

SendOutcome SendCurrentLine(const SendPane& pane)
{
    std::size_t from = std::min(pane.caret, pane.text.size());
    for (std::size_t steps = 0; steps < LongestWalk && from > 0 && !isLineEnd(pane.text[from - 1]); ++steps)
        --from;
    // Meant: the walk goes on behind the line, to the end of the pane.
    std::u16string sent = pane.text.substr(from, LongestWalk);
    std::u16string text = pane.text + std::u16string(LineEnd);
    const std::size_t caret = from + sent.size() + LineEnd.size(); // the second walk has taken it along
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
