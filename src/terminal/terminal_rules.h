// What the keys of the terminal's panes do, and how its panes share their window: rules that need no window.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// The send pane as a value: line ends are CR LF, and the caret counts both of their characters.
struct SendPane {
    std::u16string text;
    std::size_t caret = 0; // characters in front of it
};

// What a key does to the pane, and what goes to the logger. An empty text is sent as a bare line end; none is not sent.
struct SendOutcome {
    SendPane pane;
    std::optional<std::u16string> sent;
};

// Each walk through the pane's text gives up after so many characters.
constexpr std::size_t LongestWalk = 10000;

// Enter without Shift; `pane` is that before the key: its line break is not put in. The text from the start of the
// caret's line goes to the logger, with all lines below it. A line end is added behind the text; the caret goes behind
// what was sent, and on by the length of a line end.
SendOutcome SendCurrentLine(const SendPane& pane);

// Alt+A: the whole pane, which ends in a line end afterwards.
SendOutcome SendWholePane(const SendPane& pane);

// Alt+C.
SendOutcome EmptySendPane(const SendPane& pane);

// Between an editor's text, whose line ends are single characters, and the pane's.
SendPane PaneOfEditor(std::u16string_view text, std::size_t caret);
std::size_t EditorCaret(const SendPane& pane); // a caret between CR and LF stands behind both

// The heights of the two panes in a window of that inner height.
struct PaneHeights {
    int receive = 0;
    int send = 0;
};
PaneHeights HalfEach(int inner);
PaneHeights WithSendHeight(int inner, int send);

} // namespace harvelop
