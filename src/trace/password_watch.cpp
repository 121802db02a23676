#include "trace/password_watch.h"

#include "core/text_lines.h"

#include <algorithm>
#include <array>
#include <utility>

namespace harvelop
{

namespace
{

constexpr std::string_view Probe = "\x7f";
constexpr std::string_view LoggerIsThere = "<<";
constexpr size_t LongestLine = 1024; // of a longer one the beginning is looked at
constexpr size_t MostSaid = 1000;    // lines without an answer; of more the last ones count

struct Command {
    std::string_view line;
    bool isModems;
};

constexpr auto Commands = std::to_array<Command>({
    {"Q /H/r", false},
    {"Q /H/r/M/U/N", false},
    {"END", false},
    {"TEST0", false},
    {"/h/U/N", false},
    {"CHARAC1", false},
    {"/h/R/U/N", false},
    {"ath0", true},
    {"atz", true},
    {"ate0v1", true},
    {"at", true},
    {"at&h", true},
});

std::string_view withoutEscapes(std::string_view line)
{
    constexpr std::string_view Escape = "+++"; // has no line end of its own, so it stands before the next line
    while (line.starts_with(Escape))
        line.remove_prefix(Escape.size());
    return line;
}

const Command* findCommand(std::string_view line)
{
    const auto* found = std::ranges::find(Commands, withoutEscapes(line), &Command::line);
    return found == Commands.end() ? nullptr : found;
}

std::string withoutControls(const std::string& line)
{
    std::string plain;
    std::ranges::copy_if(line, std::back_inserter(plain), [](char c) { return !IsControl(c); });
    return plain;
}

// Behind a prompt, maybe.
bool isEcho(std::string_view line, std::string_view said)
{
    return line.size() >= said.size() && FindIgnoringCase(line.substr(line.size() - said.size()), said) == 0;
}

} // namespace

void PasswordWatch::Opened(Line line)
{
    m_now = {};
    m_now.passwordNext = line == Line::ComPort;
}

void PasswordWatch::Sent(std::string_view bytes)
{
    for (const char c : bytes) {
        const bool followsCr = std::exchange(m_now.afterCr, c == '\r');
        if (c == '\r' || (c == '\n' && !followsCr))
            takeSentLine(std::exchange(m_now.sent, {}));
        else if (c != '\n' && m_now.sent.size() < LongestLine)
            m_now.sent += c;
    }
}

void PasswordWatch::Received(std::string_view bytes)
{
    for (const char c : bytes) {
        if (c == '\r' || c == '\n' || m_now.received.size() >= LongestLine)
            takeAnswer(withoutControls(std::exchange(m_now.received, {})));
        else
            m_now.received += c;
    }
}

bool PasswordWatch::LineUnderWay() const
{
    return !withoutControls(std::string(withoutEscapes(m_now.sent))).empty();
}

void PasswordWatch::GiveUpLine()
{
    if (LineUnderWay())
        m_secrets.Learn(m_now.sent);
}

void PasswordWatch::takeSentLine(const std::string& line)
{
    const bool isNext = std::exchange(m_now.passwordNext, false);
    if (m_now.said.size() == MostSaid)
        m_now.said.erase(m_now.said.begin());
    if (const std::string plain = withoutControls(line); !plain.empty())
        m_now.said.push_back(plain);
    const bool isProbe = line == Probe;
    m_now.probed = m_now.probed || isProbe;
    const Command* command = findCommand(line);
    if (isProbe || command)
        m_now.passwordNext = isNext && !(command && command->isModems); // it comes behind those to the logger
    else if (!learnNamed(line) && (isNext || m_now.locked))
        m_secrets.Learn(line);
    else if (!m_now.loggingIn)
        m_now.asked = m_now.asked || !line.empty();
}

// Of a login to a server, or where a password is named as such.
bool PasswordWatch::learnNamed(const std::string& line)
{
    constexpr std::string_view Pass = "PASS ";
    constexpr std::string_view Auth = "AUTH ";
    constexpr std::string_view Password = "PASSWORD=";
    if (m_now.loggingIn) {
        m_secrets.Learn(line);
        return true;
    }
    if (FindIgnoringCase(line, Pass) == 0) {
        m_secrets.Learn(line.substr(Pass.size()));
        return true;
    }
    if (FindIgnoringCase(line, Auth) == 0) {
        m_now.loggingIn = true;
        if (const size_t given = line.find(' ', Auth.size()); given != std::string::npos)
            m_secrets.Learn(line.substr(given + 1));
        return true;
    }
    if (const size_t at = FindIgnoringCase(line, Password); at != std::string::npos) {
        m_secrets.Learn(line.substr(at + Password.size()));
        return true;
    }
    return false;
}

void PasswordWatch::takeAnswer(const std::string& line)
{
    if (line.empty())
        return;
    if (m_now.asked && HoldsIgnoringCase(line, "Accepted")) {
        for (const std::string& said : m_now.said)
            if (!findCommand(said))
                m_secrets.Learn(said);
    } else if (m_now.probed && Holds(line, LoggerIsThere)) {
        m_now.locked = true;
        return;
    } else if (std::ranges::any_of(m_now.said, [&](const std::string& said) { return isEcho(line, said); })) {
        return;
    }
    m_now.said.clear();
    m_now.asked = false;
    m_now.probed = false;
    m_now.locked = false;
    m_now.passwordNext = m_now.passwordNext || Holds(line, "CONNECT");
}

} // namespace harvelop
