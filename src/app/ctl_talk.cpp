#include "app/ctl_talk.h"

#include "app/ctl_commands.h"
#include "app/ctl_json.h"
#include "app/ctl_links.h"
#include "app/ctl_output.h"
#include "core/text_lines.h"

#include <sstream>
#include <utility>

namespace harvelop
{

namespace
{

// Of a logger that never falls silent, no more is awaited.
constexpr int LongestAnswerS = 30;
constexpr size_t LongestAnswer = 1 << 20; // characters

constexpr double LookAtLinkMs = 200;
constexpr double BetweenLinesMs = 10; // what is piped in must not fill the memory before it leaves

// The terminal's pane: prints what comes in, and the captions as progress. Made for a screen, it prints no control
// characters but those of lines and columns.
class Pane : public TerminalForm
{
public:
    enum class Form { Bytes, Screen, Json }; // as it comes; what a screen can show; an object for each line
    Pane(Program& program, Console& console, std::ostream& out, Form form)
        : m_program(program), m_lines(console), m_out(out), m_form(form)
    {
        m_program.forms.terminal = this;
        m_program.state.TerminalOpen = true;
    }
    ~Pane() override
    {
        if (m_form == Form::Json && !m_held.empty())
            printLines("\n");
        Close();
        m_program.forms.terminal = nullptr;
    }
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    size_t Taken() const { return m_taken; } // characters so far
    bool CanPrint() const { return m_out.good(); }

    void SetCaption(const std::string& caption) override { m_lines.SetCaption(caption); }
    void Append(const std::string& text) override
    {
        m_taken += text.size();
        if (m_form == Form::Json)
            return printLines(text);
        m_out << (m_form == Form::Screen ? printable(text) : text) << std::flush;
    }
    void ClearReceived() override {}
    void Close() override { m_program.state.TerminalOpen = false; }

private:
    // Each line that is whole; the rest is held.
    void printLines(const std::string& text)
    {
        m_held += text;
        for (size_t end = m_held.find('\n'); end != std::string::npos; end = m_held.find('\n')) {
            std::string line = m_held.substr(0, end);
            std::erase(line, '\r');
            m_held.erase(0, end + 1);
            m_out << JsonText({{"received", line}}, true) << std::flush;
        }
    }

    // A character that comes in two pieces is looked at whole.
    std::string printable(const std::string& text)
    {
        constexpr char FirstOfTwo = '\xC2'; // of the control characters beyond ASCII
        std::string whole = std::exchange(m_held, {}) + text;
        if (whole.ends_with(FirstOfTwo)) {
            m_held = FirstOfTwo;
            whole.pop_back();
        }
        return Printable(whole, "\t\r\n");
    }

    Program& m_program;
    ConsoleMessages m_lines;
    std::ostream& m_out;
    Form m_form;
    size_t m_taken = 0;
    std::string m_held; // the beginning of what can't be printed yet
};

// Until nothing has come for a second.
void awaitSilence(Program& p, const Pane& pane)
{
    const size_t before = pane.Taken();
    for (int seconds = 0; seconds < LongestAnswerS && LinkStands(p) && !p.end.Ended(); ++seconds) {
        const size_t seen = pane.Taken();
        p.waiting.WaitMs(1000);
        if (pane.Taken() == seen || pane.Taken() - before > LongestAnswer)
            return;
    }
}

// Sends the text and takes the answer.
int exchange(Program& p, Console& console, const CtlCommand& command, std::ostream& out)
{
    std::ostringstream answer;
    const Pane pane(p, console, answer, Pane::Form::Bytes);
    p.exchange.txtTerminal.clear(); // what came before is no answer
    p.exchange.SendToLogger(command.text);
    awaitSilence(p, pane);
    const std::string text = answer.str();
    LineReader lines(text);
    std::string_view line;
    while (lines.Next(line))
        out << (command.json ? std::string(line) : Printable(line, "\t")) << "\n"; // JSON escapes by itself
    return LinkStands(p) ? CtlDone : LinkLost(console, command.number);
}

void talk(Program& p, const Pane& pane, LineInput& input)
{
    while (LinkStands(p) && p.state.TerminalOpen && pane.CanPrint() && !p.end.Ended()) {
        if (const auto line = input.NextLine()) {
            p.exchange.SendToLogger(*line);
            p.waiting.WaitMs(BetweenLinesMs);
        } else if (input.AtEnd()) {
            return awaitSilence(p, pane);
        } else {
            p.waiting.ServeFor(LookAtLinkMs);
        }
    }
}

int talkOnPane(Program& p, Console& console, const CtlCommand& command, std::ostream& out, LineInput& input)
{
    const Pane::Form plain = console.ShowsResults() ? Pane::Form::Screen : Pane::Form::Bytes;
    const Pane pane(p, console, out, command.json ? Pane::Form::Json : plain);
    p.state.QuietConnect = true;
    p.connecting.ConnectLogger(command.number);
    p.state.QuietConnect = false;
    console.EndProgressLine();
    const int code = p.link.LinkConnected ? CtlDone : CtlFailed;
    if (!LinkStands(p))
        return NotReached(console, command.number);
    talk(p, pane, input);
    return LinkStands(p) || p.end.Ended() ? code : LinkLost(console, command.number);
}

} // namespace

int SendLine(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    Program& p = program;
    if (!TakeLogger(p, console, command.number))
        return CtlFailed;
    ConsoleMessages messages(console);
    p.forms.loadMessages = [&]() -> MessageForm* { return &messages; };
    p.connecting.ConnectLogger(command.number);
    int code = CtlFailed;
    if (!p.link.LinkConnected) {
        NotReached(console, command.number);
    } else if (command.text.empty()) {
        code = CtlDone;
    } else {
        p.progress.ShowProgressText(p.language.Text(302) + " ...");
        p.waiting.WaitMs(1000);
        code = LinkStands(p) ? exchange(p, console, command, out) : LinkLost(console, command.number);
        if (code == CtlDone)
            p.progress.ShowProgressText(p.language.Text(303));
    }
    p.connecting.ReleaseLink();
    console.EndProgressLine();
    return code;
}

int TalkToLogger(Program& program, Console& console, const CtlCommand& command, std::ostream& out, LineInput& input)
{
    Program& p = program;
    if (!TakeLogger(p, console, command.number))
        return CtlFailed;
    const int code = talkOnPane(p, console, command, out, input);
    p.connecting.ReleaseLink(); // what a modem says to this is for nobody
    return code;
}

} // namespace harvelop
