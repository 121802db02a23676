// The text primitive that every dialogue rests on: send a line, then watch what arrives for a reply between two
// markers.
#pragma once

#include "core/forms.h"
#include "core/program_state.h"
#include "core/waiting.h"
#include "links/ethernet_link.h"
#include "links/link_state.h"
#include "links/modRS232.h"
#include "links/receive_window.h"
#include "links/response_scan.h"
#include "links/terminal_text.h"

#include <string>

namespace harvelop
{

class CommandExchange
{
public:
    CommandExchange(Waiting& waiting, LinkState& link, ProgramState& state, Forms& forms, modRS232& rs232,
                    EthernetLink& ethernet);

    // Sends one line on the current link; CR LF is added. With no link nothing happens and nothing is reported.
    void SendToLogger(const std::string& text);

    // Waits until a reply stands between the markers, or `timeoutMs` have gone from entry. Gives the reply, also in
    // `LastReply`; empty on failure, which leaves `LastReply` as it was. `ResponseStatus` is "PASS" or "FAIL".
    // What the port holds undelivered is dropped at the start, what stands in the window is not: a stale reply matches.
    // A limit of 0 or less fails at once; with any other the window is looked at once at least. `AbortWait` ends it.
    // `includeMarkers` keeps the markers in the reply; `trimWindow` cuts the window after success.
    std::string WaitForResponse(const Markers& markers, double timeoutMs, bool includeMarkers, bool trimWindow);

    // Sends and waits for the text strictly between the markers; a time-out of 0 stands for `DefaultTimeout`. The
    // reply is in `ResponseText`.
    void SendAndWait(const std::string& command, const Markers& markers, double timeoutMs = 0);

    // Takes what has arrived: `source` is "ComPort" or "Ethernet". The terminal, if it is open and nothing else works
    // on the link, is shown all that it has not seen yet.
    void ReceiveText(const std::string& source);

    ReceiveWindow txtCharacterWindow; // where replies are looked for
    TerminalText txtTerminal;         // a copy of all that arrives, for the terminal; only its end while none is open

private:
    std::string takeReply(const MarkerMatch& match, const Markers& markers, bool includeMarkers, bool trimWindow);

    Waiting& m_waiting;
    LinkState& m_link;
    ProgramState& m_state;
    Forms& m_forms;
    modRS232& m_rs232;
    EthernetLink& m_ethernet;
};

} // namespace harvelop
