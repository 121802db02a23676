// How `harvelctl` talks: progress and boxes on standard error, questions on the terminal.
#pragma once

#include "core/forms.h"
#include "platform/dialogs.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace harvelop
{

// A text of a box without the blanks around it and the ends of its lines, which are for windows.
std::string PlainText(std::string text);

// What a command has told, for its result as JSON.
struct ConsoleMessage {
    std::string kind; // "information", "warning", "error" or "question"
    std::string text;
    std::string answer = {}; // to a question: "yes" or "no"
};

// Standard error as one place: a moving line on a terminal, plain lines otherwise.
class Console
{
public:
    Console(); // standard error and input, moving and asking as they are terminals
    Console(std::ostream& err, bool moving, bool canAsk, bool showsResults = false)
        : m_err(err), m_moving(moving), m_canAsk(canAsk), m_showsResults(showsResults)
    {
    }

    void Progress(const std::string& text); // replaces the moving line, or prints a line
    void Line(const std::string& text);     // a line that stays and tells what failed
    void Print(const std::string& text);    // a line that stays and is no message, or is kept otherwise
    void EndProgressLine();                 // ends a moving line that stands

    // Asks on the terminal; none without one or at its end of input. `hidden` does not show what is typed.
    std::optional<std::string> Ask(const std::string& question, bool hidden);

    void Keep(ConsoleMessage message) { m_messages.push_back(std::move(message)); }
    const std::vector<ConsoleMessage>& Messages() const { return m_messages; }

    bool ShowsResults() const { return m_showsResults; } // standard output, too, is a terminal

private:
    std::ostream& m_err;
    bool m_moving; // progress replaces its line
    bool m_canAsk; // somebody is there to answer
    bool m_showsResults;
    bool m_stands = false; // a moving line stands
    std::string m_last;
    std::vector<ConsoleMessage> m_messages;
};

// The progress "window" of the command line.
class ConsoleMessages : public MessageForm
{
public:
    explicit ConsoleMessages(Console& console) : m_console(console) {}
    void SetVisible(bool) override {}
    void SetCaption(const std::string& caption) override;
    void SetBar(int, int) override {}

private:
    Console& m_console;
};

// Boxes become lines. A question is answered by `--yes`, else on the terminal, else with Cancel or No; a password by
// `--password`, else on the terminal, else not at all.
class ConsoleDialogs : public Dialogs
{
public:
    ConsoleDialogs(Console& console, bool yes, std::optional<std::string> password, std::string file = {})
        : m_console(console), m_yes(yes), m_password(std::move(password)), m_file(std::move(file))
    {
    }
    BoxAnswer Show(const Box& box) override;
    std::string AskPassword(const std::string& text, const std::string& title) override;
    // No command lets anybody choose: a file is named on the command line, a folder nowhere.
    std::string BrowseFolder(const std::string&, const std::string&) override { return {}; }
    std::string OpenFile(const std::string&, const std::string&, const std::string&) override { return m_file; }

private:
    Console& m_console;
    bool m_yes;
    std::optional<std::string> m_password;
    std::string m_file;
};

} // namespace harvelop
