#include "app/ctl_console.h"

#include <algorithm>
#include <csignal>
#include <iostream>
#include <termios.h>
#include <unistd.h>

namespace harvelop
{

namespace
{

// While it lives the terminal does not show what is typed, and an interrupt ends the reading instead of the program, so
// that the terminal always gets its echo back.
class HiddenTyping
{
public:
    HiddenTyping() : m_changed(tcgetattr(STDIN_FILENO, &m_before) == 0)
    {
        if (!m_changed)
            return;
        struct sigaction interrupt {
        };
        interrupt.sa_handler = [](int) {};
        sigaction(SIGINT, &interrupt, &m_interrupt);
        sigaction(SIGTERM, &interrupt, &m_terminate);
        termios quiet = m_before;
        quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
    }
    ~HiddenTyping()
    {
        if (!m_changed)
            return;
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
        sigaction(SIGINT, &m_interrupt, nullptr);
        sigaction(SIGTERM, &m_terminate, nullptr);
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

private:
    termios m_before{};
    struct sigaction m_interrupt {
    };
    struct sigaction m_terminate {
    };
    bool m_changed;
};

// While it lives, the signals that ask for the end are not held back, as nobody would look at them.
class Interruptible
{
public:
    Interruptible()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&signals, signal);
        pthread_sigmask(SIG_UNBLOCK, &signals, &m_before);
    }
    ~Interruptible() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Interruptible(const Interruptible&) = delete;
    Interruptible& operator=(const Interruptible&) = delete;

private:
    sigset_t m_before{};
};

// A line from the terminal; none at its end or after an interrupt.
std::optional<std::string> readLine()
{
    const Interruptible reading;
    std::string line;
    char c = 0;
    while (read(STDIN_FILENO, &c, 1) == 1) {
        if (c == '\n')
            return line;
        line += c;
    }
    return std::nullopt;
}

} // namespace

std::string PlainText(std::string text)
{
    std::ranges::replace(text, '\r', '\n');
    const size_t first = text.find_first_not_of(" \n");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \n") - first + 1);
}

Console::Console()
    : Console(std::cerr, isatty(STDERR_FILENO) == 1, isatty(STDIN_FILENO) == 1, isatty(STDOUT_FILENO) == 1)
{
}

void Console::Progress(const std::string& text)
{
    if (text == m_last)
        return;
    m_last = text;
    if (m_moving) {
        m_err << "\r\x1b[K" << text << std::flush;
        m_stands = true;
    } else {
        m_err << text << std::endl;
    }
}

void Console::Line(const std::string& text)
{
    Keep({"error", text});
    Print(text);
}

void Console::Print(const std::string& text)
{
    EndProgressLine();
    m_err << text << std::endl;
}

void Console::EndProgressLine()
{
    if (m_stands)
        m_err << std::endl;
    m_stands = false;
}

std::optional<std::string> Console::Ask(const std::string& question, bool hidden)
{
    if (!m_canAsk)
        return std::nullopt;
    EndProgressLine();
    m_err << question << std::flush;
    std::optional<std::string> answer;
    if (hidden) {
        const HiddenTyping typing;
        answer = readLine();
    } else {
        answer = readLine();
    }
    if (hidden || !answer)
        m_err << std::endl;
    return answer;
}

void ConsoleMessages::SetCaption(const std::string& caption)
{
    // The arrow in front is the window's.
    constexpr std::string_view Arrow = "<- ";
    const bool arrow = caption.compare(0, Arrow.size(), Arrow) == 0;
    const std::string text = PlainText(arrow ? caption.substr(Arrow.size()) : caption);
    if (!text.empty())
        m_console.Progress(text);
}

BoxAnswer ConsoleDialogs::Show(const Box& box)
{
    const std::string text = PlainText(box.text);
    if (box.buttons == BoxButtons::Ok) {
        m_console.Print(text);
        if (!box.detail.empty())
            m_console.Print(box.detail);
        return BoxAnswer::Ok;
    }
    const BoxAnswer agreed = box.buttons == BoxButtons::YesNo ? BoxAnswer::Yes : BoxAnswer::Ok;
    const BoxAnswer declined = box.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Cancel;
    if (m_yes)
        return agreed;
    const auto answer = m_console.Ask(text + " [y/N] ", false);
    if (!answer)
        m_console.Print(text + " Not done: nobody to ask, and no --yes.");
    return answer && (*answer == "y" || *answer == "Y" || *answer == "yes") ? agreed : declined;
}

std::string ConsoleDialogs::AskPassword(const std::string& text, const std::string&)
{
    if (!m_password)
        m_console.Print(PlainText(text));
    std::string password = m_password ? *m_password : m_console.Ask("Password: ", true).value_or("");
    m_console.Keep({"question", PlainText(text), password.empty() ? "no" : "yes"});
    return password;
}

} // namespace harvelop
