// Message boxes, questions and choosers. Windows show them; the command line prints and asks; tests queue the answers.
#pragma once

#include <string>

namespace harvelop
{

enum class BoxIcon { None, Critical, Question, Exclamation, Information };
enum class BoxButtons { Ok, OkCancel, YesNo };
enum class BoxAnswer : int { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

struct Box {
    std::string text;  // UTF-8, as it stands, trailing blanks included
    std::string title; // empty: the program's name
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::Ok;
    std::string detail = {}; // a further line in plain words, such as who holds a port; may be empty
};

class Dialogs
{
public:
    virtual ~Dialogs() = default;

    // Blocks with events running. A box closed without a choice answers Cancel, No or (with one button) Ok.
    virtual BoxAnswer Show(const Box& box) = 0;

    // Asks for a line of text that is not shown while typed. Empty: cancelled, or nothing entered.
    virtual std::string AskPassword(const std::string& text, const std::string& title) = 0;

    // Lets the user choose an existing folder, beginning in `startIn`. Its path without a trailing separator, but for
    // the root; empty if the user cancels.
    virtual std::string BrowseFolder(const std::string& title, const std::string& startIn) = 0;

    // Lets the user choose an existing file of any kind, beginning in `startIn`; `extension`, such as "cmd", need not
    // be typed. Its path; empty if the user cancels.
    virtual std::string OpenFile(const std::string& title, const std::string& startIn,
                                 const std::string& extension) = 0;
};

} // namespace harvelop
