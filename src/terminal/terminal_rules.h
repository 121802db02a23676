// What the keys of the terminal's panes do, and how its panes share their window: rules that need no window.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
// caret's line goes to the logger, with all lines below it. A line end is added behind the text; the caret goes on by
// its length.
SendOutcome SendCurrentLine(const SendPane& pane);

// Alt+A: the whole pane, which ends in a line end afterwards.
SendOutcome SendWholePane(const SendPane& pane);

// Alt+C.
SendOutcome EmptySendPane(const SendPane& pane);

// Between an editor's text, whose line ends are single characters, and the pane's.
SendPane PaneOfEditor(std::u16string_view text, std::size_t caret);
std::size_t EditorCaret(const SendPane& pane); // a caret between CR and LF stands behind both

// Received text, cut into rows that can be shown fast however long its lines are. Line ends may be CR, LF or both.
class ReceivedRows
{
public:
    static constexpr std::size_t RowLength = 200; // characters

    struct Rows {
        std::string text;                    // rows, divided by LF
        std::vector<std::size_t> continuing; // the rows, counted from 0, that go on the line of the row before
    };

    // The next piece of text, which holds whole characters only. The first row belongs to the last row of before.
    Rows Take(std::string_view text);

private:
    std::size_t m_column = 0;
    bool m_afterCr = false;
};

// How much of a text is whole UTF-8 characters: all of it, but for a last one whose bytes have not all come.
std::size_t WholeCharacters(std::string_view text);

// The heights of the two panes in a window of that inner height.
struct PaneHeights {
    int receive = 0;
    int send = 0;
};
PaneHeights HalfEach(int inner);
PaneHeights WithSendHeight(int inner, int send);

} // namespace harvelop
