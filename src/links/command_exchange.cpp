#include "links/command_exchange.h"

#include <algorithm>

namespace harvelop
{

namespace
{
constexpr double MsOfSecond = 1000.0;
constexpr double LongestSleepMs = 60000.0; // a wait over midnight would otherwise ask for a day
constexpr size_t KeptUnread = 65500;       // what stays of the terminal's copy while no terminal reads it
} // namespace

CommandExchange::CommandExchange(Waiting& waiting, LinkState& link, ProgramState& state, Forms& forms, modRS232& rs232,
                                 EthernetLink& ethernet)
    : m_waiting(waiting), m_link(link), m_state(state), m_forms(forms), m_rs232(rs232), m_ethernet(ethernet)
{
}

void CommandExchange::SendToLogger(const std::string& text)
{
    if (m_link.LinkMode == "ComPort")
        m_rs232.ComSend(text);
    else if (m_link.LinkMode == "Ethernet")
        m_ethernet.EthernetSend(text);
}

std::string CommandExchange::WaitForResponse(const Markers& markers, double timeoutMs, bool includeMarkers,
                                             bool trimWindow)
{
    m_rs232.MSComm1.ClearInBuffer();
    m_link.ResponseStatus = "FAIL";
    const double start = m_waiting.Timer();
    const double limit = timeoutMs / MsOfSecond;
    if (!(limit > 0))
        return {};

    ResponseScan scan(markers);
    const auto left = [&] { return limit - (m_waiting.Timer() - start); };
    m_waiting.ServeEvents();
    // The first scan comes whatever the time: on a busy machine the serving alone may outlast a short limit, and what
    // it brought is looked at all the same. Behind the limit nothing else is looked at. Meant: over midnight the
    // elapsed time goes negative and the wait goes on, until a match or an abort.
    do {
        if (m_waiting.Ended())
            break;
        if (const auto match = scan.Scan(txtCharacterWindow))
            return takeReply(*match, markers, includeMarkers, trimWindow);
        const double remaining = left();
        if (m_state.AbortWait || remaining <= 0)
            break;
        m_waiting.ServeFor(std::min(remaining * MsOfSecond, LongestSleepMs));
    } while (left() > 0);
    return {};
}

std::string CommandExchange::takeReply(const MarkerMatch& match, const Markers& markers, bool includeMarkers,
                                       bool trimWindow)
{
    const std::string& text = txtCharacterWindow.Text();
    const size_t from = includeMarkers ? match.start : match.start + markers.startText.size();
    const size_t to = includeMarkers ? match.end + markers.endText.size() : match.end;
    // Where the markers overlap, nothing stands between them.
    m_link.LastReply = to > from ? text.substr(from, to - from) : std::string();
    m_link.ResponseStatus = "PASS";
    // Meant: what is kept is not the rest behind the reply but as many characters as reach to the start marker's first.
    if (trimWindow)
        txtCharacterWindow.Set(text.substr(text.size() - (match.start + 1)));
    return m_link.LastReply;
}

void CommandExchange::SendAndWait(const std::string& command, const Markers& markers, double timeoutMs)
{
    const double limitMs = timeoutMs != 0 ? timeoutMs : m_link.DefaultTimeout;
    SendToLogger(command);
    m_link.ResponseText = WaitForResponse(markers, limitMs, false, false);
    if (m_link.ResponseStatus != "PASS")
        m_link.ExchangeFailed = true;
}

void CommandExchange::ReceiveText(const std::string& source)
{
    if (source == "ComPort")
        m_link.ReceivedText = m_rs232.MSComm1.Input();
    else if (source == "Ethernet")
        m_link.ReceivedText = m_link.EthernetChunk;
    txtCharacterWindow.Append(m_link.ReceivedText);
    txtTerminal.Append(m_link.ReceivedText);
    if (!m_state.TerminalOpen) {
        // Nobody reads the copy now, and a device that never stops sending must not fill the memory.
        txtTerminal.KeepEnd(KeptUnread);
        return;
    }
    if (m_forms.terminal && !m_state.QuietConnect && !m_state.SearchRunning && !m_state.TestRunning)
        txtTerminal.ShowOn(*m_forms.terminal);
}

} // namespace harvelop
